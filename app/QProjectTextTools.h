#pragma once

#include "FindDlgMlt.h"
#include "QQuickFindOption.h"

#include <QObject>
#include <QPointer>

class MainWindow;
class QInterface;
class QTextEditors;

// The text tools that reach past the one file the workspace shows: find and replace in all files of
// the project (a floating dialog whose place and visibility the configuration keeps), the choice of a
// file's encoding from the menu, and the configured look of the code editor, applied at start and
// whenever the options are applied.
class QProjectTextTools : public QObject
{
    Q_OBJECT
public:
    QProjectTextTools(QInterface* iface, MainWindow* window, QTextEditors* texts);
    ~QProjectTextTools() override;

    FindDlgMlt* findDialog() const { return findMulti; }

public Q_SLOTS:
    void showFindMulti();
    // Hands the configured font, tabs, gutter parts and highlights to the text workspace.
    void applyConfig();
    void findInFiles(const QString& text, const QQuickFindOptions& options);
    void replaceInFiles(const QString& source, const QString& dest, const QQuickFindOptions& options,
                        bool all);

private:
    void restoreFindMulti();
    void storeFindMulti();

    QInterface* iface;
    QTextEditors* texts;
    QPointer<FindDlgMlt> findMulti;
    // The dialog has a place worth keeping: it was shown or put where it last stood.
    bool placed = false;
};
