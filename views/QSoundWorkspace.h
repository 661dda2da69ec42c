#pragma once

#include "QInterfaceEditor.h"
#include "QQuickFindOption.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

class QQuickFind;
class QSoundTable;
class QSounds;
class QTableView;

// The page of the main window that the sounds editor shows itself in: the sounds of the file as a
// table by group and sample with the facts of each WAV, and a search bar under it. The page shows one
// row as current; which one is the editor's business, told through selectRow() and rowPicked().
class QSoundWorkspace : public QObject, public QInterfaceWorkspace
{
    Q_OBJECT

public:
    // The number under which the window registers the page.
    static constexpr int Number = 2;

    explicit QSoundWorkspace(QWidget* parentWidget, QObject* parent = nullptr);
    ~QSoundWorkspace() override;

    QWidget* page() const { return pageWidget; }
    QTableView* list() const { return view; }
    QSoundTable* table() const { return tableModel; }
    QQuickFind* findBar() const { return find; }

    void setSounds(QSounds* sounds);

    // QInterfaceWorkspace: the table's font follows the zoom of the status bar.
    void zoomIn() override;
    void zoomOut() override;
    void zoomActual() override;

public Q_SLOTS:
    // Makes a row current without telling rowPicked(); -1 clears the selection.
    void selectRow(int row);

Q_SIGNALS:
    // The user made another row current.
    void rowPicked(int row);
    // A double click or Enter on a row: the editor plays it.
    void rowActivated(int row);
    // WAV files dropped on the list.
    void filesDropped(const QStringList& files);
    void doFind(const QString& text, const QQuickFindOptions& options);
    void doReplace(const QString& source, const QString& dest, const QQuickFindOptions& options, bool all);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void zoomBy(int steps);

    QWidget* pageWidget;
    QTableView* view;
    QSoundTable* tableModel;
    QQuickFind* find;
    // The list's viewport, asked for once: the list may be half gone when its last events come.
    QPointer<QWidget> dropTarget;
    int selecting = 0;
    int zoom = 0;
    int baseSize = 0;
};
