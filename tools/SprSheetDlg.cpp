#include "SprSheetDlg.h"

#include "QImageFiles.h"
#include "QRenderWidgets.h"
#include "QSprSheetRender.h"
#include "QUserDialogs.h"
#include "QViewSettings.h"

#include <QDialogButtonBox>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

SprSheetDlg::SprSheetDlg(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("SprSheetDlg"));
    setWindowTitle(tr("Sprite sheet importer"));
    view = new QSprSheetRender(this);

    auto* layout = new QVBoxLayout(this);
    auto* tools = new QHBoxLayout;
    const auto button = [this](const char* name, const QString& text) {
        auto* made = new QPushButton(text, this);
        made->setObjectName(QLatin1String(name));
        made->setAutoDefault(false);
        return made;
    };
    openButton = button("open", tr("Open sprite sheet..."));
    detectButton = button("autoDet", tr("Automatic detection"));
    selectButton = button("selTool", tr("Selection tool"));
    selectButton->setCheckable(true);
    zoomOutButton = new QToolButton(this);
    zoomOutButton->setObjectName(QStringLiteral("zminus"));
    zoomOutButton->setText(QStringLiteral("-"));
    zoomOutButton->setToolTip(tr("Zoom out"));
    zoomInButton = new QToolButton(this);
    zoomInButton->setObjectName(QStringLiteral("zplus"));
    zoomInButton->setText(QStringLiteral("+"));
    zoomInButton->setToolTip(tr("Zoom in"));
    zoomLabel = new QLabel(this);
    zoomLabel->setObjectName(QStringLiteral("zoom"));
    zoomLabel->setMinimumWidth(zoomLabel->fontMetrics().horizontalAdvance(QStringLiteral("8888%")));
    zoomLabel->setAlignment(Qt::AlignCenter);
    tools->addWidget(openButton);
    tools->addWidget(detectButton);
    tools->addWidget(selectButton);
    tools->addStretch(1);
    tools->addWidget(zoomOutButton);
    tools->addWidget(zoomLabel);
    tools->addWidget(zoomInButton);
    layout->addLayout(tools);

    viewWidget = QRenderWidgets::make(view, this, QViewSettings::value("use_opengl", false).toBool());
    viewWidget->setObjectName(QStringLiteral("view"));
    viewWidget->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    viewWidget->setMinimumSize(320, 240);
    viewWidget->setFocusPolicy(Qt::StrongFocus);
    layout->addWidget(viewWidget, 1);

    auto* bottom = new QHBoxLayout;
    status = new QLabel(this);
    status->setObjectName(QStringLiteral("status"));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    bottom->addWidget(status, 1);
    bottom->addWidget(buttons);
    layout->addLayout(bottom);
    resize(800, 600);

    connect(openButton, &QPushButton::clicked, this, &SprSheetDlg::on_open_clicked);
    connect(detectButton, &QPushButton::clicked, this, &SprSheetDlg::on_autoDet_clicked);
    connect(selectButton, &QPushButton::toggled, this, &SprSheetDlg::on_selTool_toggled);
    connect(zoomInButton, &QToolButton::clicked, this, &SprSheetDlg::on_zplus_clicked);
    connect(zoomOutButton, &QToolButton::clicked, this, &SprSheetDlg::on_zminus_clicked);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(view, &QSprSheetRender::creationModeExit, selectButton,
            [this]() { selectButton->setChecked(false); });
    connect(view, &QSprSheetRender::zoomChanged, this, &SprSheetDlg::showZoom);
    showZoom(view->zoomIndex());
    detectButton->setEnabled(false);
}

SprSheetDlg::~SprSheetDlg()
{
    // The widget tells its renderer goodbye when it goes, so it must go before the renderer does.
    delete viewWidget;
}

void SprSheetDlg::showZoom(int index)
{
    zoomLabel->setText(QStringLiteral("%1%").arg(QSprSheetRender::zoomAt(index) * 100));
    zoomInButton->setEnabled(index < QSprSheetRender::ZoomCount - 1);
    zoomOutButton->setEnabled(index > 0);
}

bool SprSheetDlg::openFile(const QString& path)
{
    const QImage sheet = QImageFiles::load(path);
    view->setImage(sheet);
    detectButton->setEnabled(!sheet.isNull());
    if (sheet.isNull()) {
        status->setText(tr("The file could not be read as an image."));
        return false;
    }
    status->setText(tr("%1 x %2 pixels").arg(sheet.width()).arg(sheet.height()));
    return true;
}

void SprSheetDlg::on_open_clicked()
{
    const QString path =
        QUserDialogs::getOpenFileName(tr("Open sprite sheet"), startFolder, QImageFiles::openFilter());
    if (path.isEmpty()) return;
    startFolder = QFileInfo(path).absolutePath();
    openFile(path);
}

void SprSheetDlg::on_autoDet_clicked()
{
    const QImage& sheet = view->image();
    if (sheet.isNull()) return;
    view->detect();
    // Detection reads palette positions: a true-colour sheet gives nothing, and the user should know why.
    if (sheet.format() != QImage::Format_Indexed8 && sheet.format() != QImage::Format_Mono &&
        sheet.format() != QImage::Format_MonoLSB)
        status->setText(tr("Automatic detection needs an image with a palette."));
    else
        status->setText(tr("%n drawing(s) found", nullptr, int(view->rectangles().size())));
}

void SprSheetDlg::on_selTool_toggled(bool on)
{
    view->setCreationMode(on);
}

void SprSheetDlg::on_zplus_clicked()
{
    view->zoomIn();
}

void SprSheetDlg::on_zminus_clicked()
{
    view->zoomOut();
}
