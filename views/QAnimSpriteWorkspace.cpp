#include "QAnimSpriteWorkspace.h"

#include "ExAxisDlg.h"
#include "QRenderWidgets.h"
#include "QSprRender.h"
#include "QViewSettings.h"

#include <QAction>
#include <QMenu>
#include <QVBoxLayout>
#include <QWidget>

namespace {
// The view actions in menu order, with the setting each one is kept under (none for the first and the
// extra cross, which start unchecked in every session).
struct ViewAction
{
    const char* name;
    const char* setting;
    bool checkable;
};
const ViewAction viewActions[] = {
    {"view_center_axis", nullptr, false},           {"view_spr_cross", "show_spr_cross", true},
    {"view_anim_cross", "show_anim_cross", true},   {"view_extra_cross", nullptr, true},
    {"view_rulers", "show_rulers", true},           {"view_guide_lines", "show_guides", true},
    {"view_attack_clsn", "show_clsn1", true},       {"view_collision_clsn", "show_clsn2", true},
    {"view_default_clsn1", "show_clsn_def1", true}, {"view_default_clsn2", "show_clsn_def2", true},
};

QVariant setting(const char* key, const QVariant& fallback)
{
    return QViewSettings::value(key, fallback);
}
} // namespace

QAnimSpriteWorkspace::QAnimSpriteWorkspace(QWidget* parent, QObject* owner)
    : QObject(owner), render(new QSprRender(this)), extraDialog(new ExAxisDlg(parent))
{
    container = new QWidget(parent);
    container->setObjectName(QStringLiteral("animsprites"));
    layout = new QVBoxLayout(container);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    buildWidget();
    render->setMainAxis(QPoint(setting("main_axis_x", 150).toInt(), setting("main_axis_y", 250).toInt()));
    render->setZoomMode(setting("zoom_mode", 1).toInt());
    appliedZoomMode = render->zoomMode();
    render->setZoomIndex(setting("zoom_level", 2).toInt());
    connect(render, &QSprRender::cursorChanged, this, &QAnimSpriteWorkspace::cursorChanged);
    connect(render, &QSprRender::extraAxisChanged, this, [this]() {
        if (extraDialog) extraDialog->setValue(render->extraCross());
    });
    connect(extraDialog, &ExAxisDlg::axisChanged, this, [this](QPoint position) {
        render->setExtraCross(position);
        render->refresh();
    });
    connect(extraDialog, &ExAxisDlg::axisClose, this, &QAnimSpriteWorkspace::extraCrossClosed);
    optionsApplied();
}

QAnimSpriteWorkspace::~QAnimSpriteWorkspace()
{
    storeSettings();
    // The widget goes before the view it borrows.
    if (container) delete widget;
    widget = nullptr;
    delete render;
    render = nullptr;
    delete extraDialog.data();
    delete container.data();
}

void QAnimSpriteWorkspace::buildWidget()
{
    delete widget;
    widget = QRenderWidgets::make(render, container, setting("use_opengl", false).toBool());
    widget->setObjectName(QStringLiteral("spriteView"));
    widget->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    layout->addWidget(widget, 0);
}

void QAnimSpriteWorkspace::addViewActions(QMenu* menu, const Registrar& registrar)
{
    menu->addSeparator();
    for (const ViewAction& entry : viewActions) {
        const QString name = QLatin1String(entry.name);
        QAction* action = registrar(name, entry.checkable);
        actions.insert(name, action);
        menu->addAction(action);
        if (entry.setting) action->setChecked(setting(entry.setting, name != "view_guide_lines").toBool());
    }
    connect(actions.value("view_center_axis"), &QAction::triggered, this, &QAnimSpriteWorkspace::centerAxis);
    connect(actions.value("view_spr_cross"), &QAction::toggled, this, &QAnimSpriteWorkspace::showCross);
    connect(actions.value("view_anim_cross"), &QAction::toggled, this, &QAnimSpriteWorkspace::showCross);
    connect(actions.value("view_extra_cross"), &QAction::toggled, this,
            &QAnimSpriteWorkspace::showExtraCross);
    connect(actions.value("view_guide_lines"), &QAction::toggled, this, &QAnimSpriteWorkspace::showGuideLns);
    // The rulers share the boxes' slot: one slot reads all five switches and hands them to the view.
    for (const char* name : {"view_rulers", "view_attack_clsn", "view_collision_clsn", "view_default_clsn1",
                             "view_default_clsn2"})
        connect(actions.value(QLatin1String(name)), &QAction::toggled, this, &QAnimSpriteWorkspace::showCLSN);
    showCross(true);
    showCLSN(true);
    showGuideLns(checked(QStringLiteral("view_guide_lines")));
}

bool QAnimSpriteWorkspace::checked(const QString& name) const
{
    const QAction* action = actions.value(name);
    return action && action->isChecked();
}

void QAnimSpriteWorkspace::bind(QAnimations* animations, QSprites* sprites)
{
    spriteModel = sprites;
    render->setAnimations(animations);
    render->setSprites(sprites);
}

QColor QAnimSpriteWorkspace::colorOf(const QString& key, const QColor& fallback) const
{
    const QColor color = colors ? colors(key) : QColor();
    return color.isValid() ? color : fallback;
}

void QAnimSpriteWorkspace::optionsApplied()
{
    buildWidget();
    render->setBackground(
        colorOf(QStringLiteral("back_start"), QColor(96, 96, 128)),
        colorOf(QStringLiteral("back_end"), QColor(16, 16, 32)), setting("background_type", 1).toInt(),
        QPoint(setting("background_x", -213).toInt(), setting("background_y", -208).toInt()),
        setting("background_file", QString()).toString());
    render->setBoxColors(
        colorOf(QStringLiteral("clsn1"), Qt::red), colorOf(QStringLiteral("clsn1def"), Qt::magenta),
        colorOf(QStringLiteral("clsn2"), Qt::blue), colorOf(QStringLiteral("clsn2def"), Qt::darkBlue),
        setting("clsn_opacity", 100).toInt());
    render->setCrosshair(setting("crosshair_type", 0).toInt(),
                         setting("crosshair_sprite", QString()).toString(),
                         setting("crosshair_animation", QString()).toString(),
                         setting("crosshair_extra", QString()).toString());
    render->setOrder(setting("clsn_over_axis", false).toBool(),
                     setting("sprite_over_guides", false).toBool());
    // A change of range keeps the zoom index; the same range leaves the zoom alone.
    const int zoomMode = setting("zoom_mode", 1).toInt();
    if (zoomMode != appliedZoomMode) {
        render->setZoomMode(zoomMode);
        appliedZoomMode = zoomMode;
    }
    render->setZoomCentre(setting("zoom_center", 0).toInt());
    render->refresh();
}

void QAnimSpriteWorkspace::storeSettings() const
{
    QViewSettings::setValue("main_axis_x", render->mainAxis().x());
    QViewSettings::setValue("main_axis_y", render->mainAxis().y());
    QViewSettings::setValue("zoom_level", render->zoomIndex());
    for (const ViewAction& entry : viewActions)
        if (entry.setting && actions.contains(QLatin1String(entry.name)))
            QViewSettings::setValue(entry.setting, checked(QLatin1String(entry.name)));
}

void QAnimSpriteWorkspace::activate()
{
    if (checked(QStringLiteral("view_extra_cross")) && render->renderMode() == QSprRender::AnimationMode)
        showExtraCross(true);
}

void QAnimSpriteWorkspace::deactivate()
{
    closeExtraCross();
}

void QAnimSpriteWorkspace::closeExtraCross()
{
    if (!extraDialog) return;
    if (extraDialog->isVisible()) extraDialogPos = extraDialog->pos();
    extraDialog->hide();
}

void QAnimSpriteWorkspace::zoomIn()
{
    render->zoomIn();
}

void QAnimSpriteWorkspace::zoomOut()
{
    render->zoomOut();
}

void QAnimSpriteWorkspace::zoomActual()
{
    render->zoomActual();
}

void QAnimSpriteWorkspace::centerAxis()
{
    render->setMainAxis(QPoint(widget->width() / 2, widget->height() / 2));
    render->refresh();
}

void QAnimSpriteWorkspace::showCross(bool)
{
    render->showSpriteCross(checked(QStringLiteral("view_spr_cross")));
    render->showAnimationCross(checked(QStringLiteral("view_anim_cross")));
    render->refresh();
}

void QAnimSpriteWorkspace::showCLSN(bool)
{
    render->showBoxes(
        checked(QStringLiteral("view_attack_clsn")), checked(QStringLiteral("view_collision_clsn")),
        checked(QStringLiteral("view_default_clsn1")), checked(QStringLiteral("view_default_clsn2")));
    render->showRulers(checked(QStringLiteral("view_rulers")));
    render->refresh();
}

void QAnimSpriteWorkspace::showGuideLns(bool on)
{
    render->showGuides(on);
    render->update();
    cursorChanged(lastCursor);
}

void QAnimSpriteWorkspace::showExtraCross(bool on)
{
    // The extra cross measures frames against each other; a single sprite has nothing to measure.
    if (render->renderMode() != QSprRender::AnimationMode) return;
    render->showExtraCross(on);
    render->update();
    if (on && extraDialog) {
        if (!extraDialog->isVisible()) {
            extraDialog->setValue(render->extraCross());
            if (!extraDialogPos.isNull()) extraDialog->move(extraDialogPos);
            extraDialog->show();
        }
    } else {
        closeExtraCross();
    }
}

void QAnimSpriteWorkspace::extraCrossClosed()
{
    if (QAction* action = actions.value(QStringLiteral("view_extra_cross"))) action->setChecked(false);
}

void QAnimSpriteWorkspace::cursorChanged(QPoint position)
{
    lastCursor = position;
    status = tr("Position: %1, %2").arg(position.x()).arg(position.y());
    if (checked(QStringLiteral("view_guide_lines")))
        status += QStringLiteral(", ") + tr("Horizontal guide: %1, Vertical guide: %2")
                                             .arg(render->guides().y())
                                             .arg(render->guides().x());
    emit statusChanged(status);
}
