#pragma once

#include <QDialog>

class QLabel;
class QPushButton;
class QSprSheetRender;
class QToolButton;

// The sprite sheet importer: shows one image and a rectangle around each separate drawing on it. It
// only shows them; closing it makes no sprite.
class SprSheetDlg : public QDialog
{
    Q_OBJECT

public:
    explicit SprSheetDlg(QWidget* parent = nullptr);
    ~SprSheetDlg() override;

    QSprSheetRender* render() const { return view; }
    QWidget* renderWidget() const { return viewWidget; }
    // Where the open dialog starts; after a sheet is opened, the folder it came from.
    QString folder() const { return startFolder; }
    void setFolder(const QString& value) { startFolder = value; }
    // Shows a sheet from a file; false when it can't be read, and the view is then empty.
    bool openFile(const QString& path);

public Q_SLOTS:
    void on_open_clicked();
    void on_autoDet_clicked();
    void on_selTool_toggled(bool on);
    void on_zplus_clicked();
    void on_zminus_clicked();

private:
    void showZoom(int index);

    QSprSheetRender* view;
    QWidget* viewWidget;
    QPushButton* openButton;
    QPushButton* detectButton;
    QPushButton* selectButton;
    QToolButton* zoomInButton;
    QToolButton* zoomOutButton;
    QLabel* zoomLabel;
    QLabel* status;
    QString startFolder;
};
