#pragma once

#include "ExAxisDlg.h"
#include "QInterfaceEditor.h"

#include <QColor>
#include <QMap>
#include <QObject>
#include <QPoint>
#include <QPointer>

#include <functional>

class QAction;
class QAnimations;
class QMenu;
class QSprRender;
class QSprites;
class QVBoxLayout;
class QWidget;

// The page that the sprites and animations editors share: one sprite view, its widget (raster or
// OpenGL by "use_opengl"), the View menu entries of the view and the extra cross tool. It carries the
// view's settings between the configuration and the view: read when built and when options are
// applied, stored when it goes.
class QAnimSpriteWorkspace : public QObject, public QInterfaceWorkspace
{
    Q_OBJECT

public:
    // Registers an action under its name and answers it; the window's action manager stands behind it.
    using Registrar = std::function<QAction*(const QString& name, bool checkable)>;
    // Colours of the current colour set by key ("back_start", "clsn1", ...); invalid means "not set".
    using ColorSource = std::function<QColor(const QString& key)>;

    explicit QAnimSpriteWorkspace(QWidget* parent, QObject* owner = nullptr);
    ~QAnimSpriteWorkspace() override;

    static QString key() { return QStringLiteral("animsprites"); }
    QWidget* page() const { return container; }
    QWidget* renderWidget() const { return widget; }
    QSprRender* view() const { return render; }
    QSprites* sprites() const { return spriteModel; }
    ExAxisDlg* extraCrossDialog() const { return extraDialog.data(); }

    // Builds the view actions into the menu behind a separator and reads their states back.
    void addViewActions(QMenu* menu, const Registrar& registrar);
    QAction* viewAction(const QString& name) const { return actions.value(name); }
    void setColorSource(ColorSource source) { colors = std::move(source); }

    // The models the view shows; null for none.
    void bind(QAnimations* animations, QSprites* sprites);
    // Reads the view's appearance settings again and rebuilds the widget (the OpenGL choice may change).
    void optionsApplied();
    // Stores the view's position, zoom and switches into the configuration.
    void storeSettings() const;
    void closeExtraCross();

    // QInterfaceWorkspace: shown and hidden with the page.
    void activate() override;
    void deactivate() override;
    void zoomIn() override;
    void zoomOut() override;
    void zoomActual() override;

    // The status texts: "Position: %1, %2", with the guide lines when they are shown.
    QString statusText() const { return status; }

public Q_SLOTS:
    void centerAxis();
    void showCross(bool);
    void showExtraCross(bool on);
    void showCLSN(bool);
    void showGuideLns(bool on);
    void extraCrossClosed();

Q_SIGNALS:
    void statusChanged(const QString& text);

private:
    void buildWidget();
    void cursorChanged(QPoint position);
    QColor colorOf(const QString& key, const QColor& fallback) const;
    bool checked(const QString& name) const;

    QVBoxLayout* layout;
    QPointer<QWidget> container;
    QWidget* widget = nullptr;
    QSprRender* render;
    QSprites* spriteModel = nullptr;
    QMap<QString, QAction*> actions;
    // Both live among the window's widgets, which may be gone before the workspace is.
    QPointer<ExAxisDlg> extraDialog;
    QPoint extraDialogPos;
    ColorSource colors;
    QString status;
    QPoint lastCursor;
    int appliedZoomMode = -1;
};
