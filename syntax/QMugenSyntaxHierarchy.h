#pragma once

#include "QHierarchyItem.h"
#include "QSyntaxHierarchy.h"
#include "QTextScanner.h"
#include "QVarUsageItem.h"

#include <QIcon>
#include <QList>

// The outline of a M.U.G.E.N. text: sections, States under their StateDef and the key lines of
// sections; in its second view (mode 1) the variables the StateDefs write, 60 integers and 40 floats.
// It is rebuilt as a whole from the text with the text scanner, so indexes don't survive an update;
// views that keep a selection go by line.
//
// Nodes come from two process-wide free lists and go back there at each rebuild, so that rebuilding
// while the user types allocates no nodes once a text of that size was seen. GUI thread only.
class QMugenSyntaxHierarchy : public QSyntaxHierarchy
{
    Q_OBJECT
public:
    enum Mode
    {
        Outline = 0,
        Variables = 1
    };

    // Gives the icon of a name of the current iconset, "st_s" for instance; a null icon for none.
    using IconLookup = QIcon (*)(const QString& name);

    explicit QMugenSyntaxHierarchy(QObject* parent = nullptr);
    ~QMugenSyntaxHierarchy() override;

    QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    // Rebuilds both trees; an empty text leaves them empty and emits nothing.
    void update(const QString& text) override;
    // The line of an item, 1 for the first line of the text; in the variables view the line of a
    // leaf's StateDef. 0 for anything else.
    int lineForIndex(const QModelIndex& index) const override;
    // The deepest outline item that stands on the block `line` (counted from 0) or above it.
    QModelIndex indexForLine(int line) const override;
    bool sectionExists(const QString& name) const override;
    QString findValue(const QString& section, const QString& key) const override;
    void setMode(int mode) override;

    // The number of distinct command names of the text.
    int commandCount() const { return m_commandCount; }
    // The number of StateDef sections of the text.
    int stateDefCount() const { return m_stateDefCount; }
    // The tree of variables whatever the mode: the log of variable use reads it without switching views.
    const QVarUsageItem& variables() const { return m_variables; }

    // The program installs the lookup of its iconset; without one items have no icon.
    static void setIconLookup(IconLookup lookup);

private:
    int nextLine();
    QStringView lineText(int line, int column) const;
    void readHeader(QString* word, QString* display);
    void keyLines(QHierarchyItem* node, bool quotes);
    void stateDefSection(QHierarchyItem* node);
    void commandSection(QHierarchyItem* node);
    void stateSection(QHierarchyItem* node);
    void addVariables(int kind, bool isInt);
    void attach(QHierarchyItem* node, QHierarchyItem* parent);

    void showRows(int count);
    void hideRows();
    int visibleTreeRows() const;

    QHierarchyItem m_root;
    QVarUsageItem m_variables;
    int m_shownRows = 0;
    int m_commandCount = 0;
    int m_stateDefCount = 0;

    // Build state.
    QTextScanner m_scanner;
    QString m_text;
    QList<int> m_lineStarts;
    QList<int> m_numbers;
    int m_token = tkEnd;
    QHierarchyItem* m_lastStateDef = nullptr;
    QHierarchyItem* m_commandGroup = nullptr;
};
