#include "QMugenSyntaxHierarchy.h"

#include <QRegularExpression>

#include <vector>

namespace {

QMugenSyntaxHierarchy::IconLookup iconLookup = nullptr;

// Nodes of earlier rebuilds, shared by all hierarchies.
std::vector<QHierarchyItem*>& freeItems()
{
    static std::vector<QHierarchyItem*> items;
    return items;
}

std::vector<QVarUsageItem*>& freeUsages()
{
    static std::vector<QVarUsageItem*> items;
    return items;
}

QHierarchyItem* takeItem()
{
    std::vector<QHierarchyItem*>& items = freeItems();
    if (items.empty()) return new QHierarchyItem;
    QHierarchyItem* item = items.back();
    items.pop_back();
    return item;
}

QVarUsageItem* takeUsage()
{
    std::vector<QVarUsageItem*>& items = freeUsages();
    if (items.empty()) return new QVarUsageItem;
    QVarUsageItem* item = items.back();
    items.pop_back();
    return item;
}

// Gives all nodes below `item` back; the item itself stays.
void strip(QHierarchyItem* item)
{
    for (QHierarchyItem* child : std::as_const(item->children)) {
        strip(child);
        child->parent = nullptr;
        child->type.clear();
        child->name.clear();
        child->value.clear();
        child->row = 0;
        child->line = 0;
        freeItems().push_back(child);
    }
    item->children.clear();
}

void strip(QVarUsageItem* item)
{
    for (QVarUsageItem* child : std::as_const(item->children)) {
        strip(child);
        child->parent = nullptr;
        child->state = nullptr;
        child->index = -1;
        freeUsages().push_back(child);
    }
    item->children.clear();
}

bool isWord(const QString& text, const char* word)
{
    return text.compare(QLatin1String(word), Qt::CaseInsensitive) == 0;
}

// "victory" and a number, in any case.
bool isVictoryKey(const QString& key)
{
    if (key.size() < 8 || !key.startsWith(QLatin1String("victory"), Qt::CaseInsensitive)) return false;
    for (qsizetype i = 7; i < key.size(); ++i)
        if (key.at(i).unicode() < '0' || key.at(i).unicode() > '9') return false;
    return true;
}

} // namespace

QMugenSyntaxHierarchy::QMugenSyntaxHierarchy(QObject* parent) : QSyntaxHierarchy(parent) {}

QMugenSyntaxHierarchy::~QMugenSyntaxHierarchy()
{
    strip(&m_root);
    strip(&m_variables);
}

void QMugenSyntaxHierarchy::setIconLookup(IconLookup lookup)
{
    iconLookup = lookup;
}

QModelIndex QMugenSyntaxHierarchy::index(int row, int column, const QModelIndex& parent) const
{
    if (column != 0 || row < 0) return QModelIndex();
    if (!parent.isValid()) {
        if (row >= m_shownRows) return QModelIndex();
        if (m_mode == Variables) return createIndex(row, 0, m_variables.children.at(row));
        return createIndex(row, 0, m_root.children.at(row));
    }
    if (m_mode == Variables) {
        const auto* item = static_cast<const QVarUsageItem*>(parent.internalPointer());
        return row < item->children.size() ? createIndex(row, 0, item->children.at(row)) : QModelIndex();
    }
    const auto* item = static_cast<const QHierarchyItem*>(parent.internalPointer());
    return row < item->children.size() ? createIndex(row, 0, item->children.at(row)) : QModelIndex();
}

QModelIndex QMugenSyntaxHierarchy::parent(const QModelIndex& child) const
{
    if (!child.isValid()) return QModelIndex();
    if (m_mode == Variables) {
        const QVarUsageItem* up = static_cast<const QVarUsageItem*>(child.internalPointer())->parent;
        if (!up || up == &m_variables) return QModelIndex();
        return createIndex(up->index, 0, up);
    }
    const QHierarchyItem* up = static_cast<const QHierarchyItem*>(child.internalPointer())->parent;
    if (!up || up == &m_root) return QModelIndex();
    return createIndex(up->row, 0, up);
}

int QMugenSyntaxHierarchy::rowCount(const QModelIndex& parent) const
{
    if (!parent.isValid()) return m_shownRows;
    if (parent.column() != 0) return 0;
    if (m_mode == Variables)
        return int(static_cast<const QVarUsageItem*>(parent.internalPointer())->children.size());
    return int(static_cast<const QHierarchyItem*>(parent.internalPointer())->children.size());
}

int QMugenSyntaxHierarchy::columnCount(const QModelIndex&) const
{
    return 1;
}

QVariant QMugenSyntaxHierarchy::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) return QVariant();
    if (m_mode == Variables) {
        if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return QVariant();
        const auto* item = static_cast<const QVarUsageItem*>(index.internalPointer());
        if (item->parent == &m_variables) return item->index == 0 ? tr("Integer") : tr("Float");
        if (item->index < 0) return item->state ? item->state->name : QString();
        return QStringLiteral("%1").arg(item->index);
    }
    const auto* item = static_cast<const QHierarchyItem*>(index.internalPointer());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return item->name;
    case Qt::DecorationRole:
        if (!iconLookup) return QVariant();
        return iconLookup(QStringLiteral("st_") + item->type);
    default:
        return QVariant();
    }
}

int QMugenSyntaxHierarchy::visibleTreeRows() const
{
    return int(m_mode == Variables ? m_variables.children.size() : m_root.children.size());
}

void QMugenSyntaxHierarchy::hideRows()
{
    if (m_shownRows == 0) return;
    beginRemoveRows(QModelIndex(), 0, m_shownRows - 1);
    m_shownRows = 0;
    endRemoveRows();
}

void QMugenSyntaxHierarchy::showRows(int count)
{
    if (count == 0) return;
    beginInsertRows(QModelIndex(), 0, count - 1);
    m_shownRows = count;
    endInsertRows();
}

void QMugenSyntaxHierarchy::setMode(int mode)
{
    if (mode == m_mode) return;
    hideRows();
    m_mode = mode;
    showRows(visibleTreeRows());
}

int QMugenSyntaxHierarchy::lineForIndex(const QModelIndex& index) const
{
    if (!index.isValid()) return 0;
    if (m_mode == Variables) {
        const auto* item = static_cast<const QVarUsageItem*>(index.internalPointer());
        return item->index < 0 && item->state ? item->state->line : 0;
    }
    return static_cast<const QHierarchyItem*>(index.internalPointer())->line;
}

QModelIndex QMugenSyntaxHierarchy::indexForLine(int line) const
{
    if (m_mode != Outline || m_shownRows == 0) return QModelIndex();
    const QHierarchyItem* found = nullptr;
    const QHierarchyItem* level = &m_root;
    for (;;) {
        const QHierarchyItem* best = nullptr;
        for (qsizetype i = level->children.size() - 1; i >= 0; --i) {
            if (level->children.at(i)->line <= line + 1) {
                best = level->children.at(i);
                break;
            }
        }
        if (!best) break;
        found = best;
        level = best;
    }
    return found ? createIndex(found->row, 0, found) : QModelIndex();
}

bool QMugenSyntaxHierarchy::sectionExists(const QString& name) const
{
    for (const QHierarchyItem* item : m_root.children)
        if (item->name.compare(name, Qt::CaseInsensitive) == 0) return true;
    return false;
}

QString QMugenSyntaxHierarchy::findValue(const QString& section, const QString& key) const
{
    for (const QHierarchyItem* item : m_root.children) {
        if (item->name.compare(section, Qt::CaseInsensitive) != 0) continue;
        for (const QHierarchyItem* child : item->children)
            if (child->name.compare(key, Qt::CaseInsensitive) == 0) return child->value;
    }
    return QString();
}

// Skips what is left of the line in hand and answers the first token of the next one.
int QMugenSyntaxHierarchy::nextLine()
{
    while (m_token != tkEndOfLine && m_token != tkEnd)
        m_token = m_scanner.next();
    if (m_token == tkEndOfLine) m_token = m_scanner.next();
    return m_token;
}

// The text of a line from a column up to its comment or its end, without trailing blanks.
QStringView QMugenSyntaxHierarchy::lineText(int line, int column) const
{
    if (line < 1 || line > m_lineStarts.size()) return QStringView();
    const qsizetype start = m_lineStarts.at(line - 1) + column;
    qsizetype stop = start;
    bool quoted = false;
    while (stop < m_text.size()) {
        const ushort c = m_text.at(stop).unicode();
        if (c == '\n' || (c == ';' && !quoted)) break;
        if (c == '"') quoted = !quoted;
        ++stop;
    }
    while (stop > start && m_text.at(stop - 1).isSpace())
        --stop;
    return stop > start ? QStringView(m_text).mid(start, stop - start) : QStringView();
}

// Reads a header from its "[" to the end of the line: the first word, and the rest up to "]" with the
// comment above the header behind it, unless the rest already ends with that comment.
void QMugenSyntaxHierarchy::readHeader(QString* word, QString* display)
{
    const int line = m_scanner.line();
    const QString comment = m_scanner.runningComment().trimmed();
    int restStart = m_scanner.column();
    m_token = m_scanner.next();
    if (m_token == tkIdentifier) {
        *word = m_scanner.text();
        restStart = m_scanner.column();
        m_token = m_scanner.next();
    }
    while (m_token != tkRightBracket && m_token != tkEndOfLine && m_token != tkEnd)
        m_token = m_scanner.next();
    QStringView rest = lineText(line, restStart);
    if (m_token == tkRightBracket) rest = rest.left(qMax(0, m_scanner.tokenColumn() - restStart));
    *display = rest.trimmed().toString();
    if (!comment.isEmpty() && !display->endsWith(comment)) *display += QStringLiteral(" - ") + comment;
    nextLine();
}

void QMugenSyntaxHierarchy::attach(QHierarchyItem* node, QHierarchyItem* parent)
{
    node->parent = parent;
    node->row = int(parent->children.size());
    parent->children.append(node);
}

// Lines "key = value" of a section become its children; in a quotes section only victory lines with
// a string.
void QMugenSyntaxHierarchy::keyLines(QHierarchyItem* node, bool quotes)
{
    while (m_token != tkEnd && m_token != tkLeftBracket) {
        if (m_token == tkIdentifier) {
            const QString key = m_scanner.text();
            const int line = m_scanner.line();
            m_token = m_scanner.next();
            if (m_token == tkEqual && (!quotes || isVictoryKey(key))) {
                m_token = m_scanner.next();
                const bool hasValue = m_token != tkEndOfLine && m_token != tkEnd;
                if (!quotes || m_token == tkString) {
                    QHierarchyItem* child = takeItem();
                    child->name = key;
                    child->line = line;
                    if (hasValue)
                        child->value = m_scanner.text() + lineText(line, m_scanner.column()).toString();
                    attach(child, node);
                }
            }
        }
        nextLine();
    }
}

void QMugenSyntaxHierarchy::stateDefSection(QHierarchyItem* node)
{
    node->type = QStringLiteral("s");
    while (m_token != tkEnd && m_token != tkLeftBracket) {
        if (m_token == tkIdentifier && isWord(m_scanner.text(), "type")) {
            m_token = m_scanner.next();
            if (m_token == tkEqual) {
                m_token = m_scanner.next();
                if (m_token == tkIdentifier) node->type = m_scanner.text().toLower();
            }
        }
        nextLine();
    }
}

void QMugenSyntaxHierarchy::commandSection(QHierarchyItem* node)
{
    node->type = QStringLiteral("command");
    while (m_token != tkEnd && m_token != tkLeftBracket) {
        if (m_token == tkIdentifier && isWord(m_scanner.text(), "name")) {
            m_token = m_scanner.next();
            if (m_token == tkEqual) {
                m_token = m_scanner.next();
                if (m_token == tkString) node->name = m_scanner.text();
            }
        }
        nextLine();
    }
    bool known = false;
    for (const QHierarchyItem* command : std::as_const(m_commandGroup->children))
        known = known || command->name == node->name;
    if (!known) ++m_commandCount;
    attach(node, m_commandGroup);
}

// Walks the lines of a State: the type line tells whether the controller writes variables, and any line
// with an inline "var(n) :=" makes it a writer of n.
void QMugenSyntaxHierarchy::stateSection(QHierarchyItem* node)
{
    static const QRegularExpression inlineAssignment(QStringLiteral("var\\s*\\(\\s*(\\d{1,3})\\s*\\)\\s*:="));
    int kind = 0;
    bool isInt = true;
    m_numbers.clear();
    while (m_token != tkEnd && m_token != tkLeftBracket) {
        const int line = m_scanner.line();
        if (m_token == tkIdentifier && isWord(m_scanner.text(), "type")) {
            m_token = m_scanner.next();
            if (m_token == tkEqual) {
                m_token = m_scanner.next();
                if (m_token != tkEndOfLine && m_token != tkEnd) {
                    node->type = m_scanner.text().toLower();
                    if (node->type == QLatin1String("varrangeset"))
                        kind = 1;
                    else if (node->type == QLatin1String("parentvaradd") ||
                             node->type == QLatin1String("parentvarset") ||
                             node->type == QLatin1String("varadd") ||
                             node->type == QLatin1String("varrandom") ||
                             node->type == QLatin1String("varset"))
                        kind = 2;
                }
            }
            nextLine();
            continue;
        }
        if (m_token == tkIdentifier && kind == 2 && m_numbers.isEmpty()) {
            const QString word = m_scanner.text().toLower();
            if (word.startsWith(QLatin1Char('f'))) isInt = false;
            const bool call = word == QLatin1String("var") || word == QLatin1String("fvar");
            const bool shortName = word == QLatin1String("v") || word == QLatin1String("fv");
            if (call || shortName) {
                m_token = m_scanner.next();
                if (m_token == (call ? tkLeftParen : tkEqual)) {
                    m_token = m_scanner.next();
                    if (m_token == tkInteger) m_numbers.append(m_scanner.toInt());
                }
            }
        } else if (m_token == tkIdentifier && kind == 1) {
            const QString word = m_scanner.text().toLower();
            // The type of the values written decides the row, wherever that line stands.
            if (word == QLatin1String("fvalue")) isInt = false;
            const bool first = word == QLatin1String("first") && m_numbers.isEmpty();
            const bool last = word == QLatin1String("last");
            if (first || last) {
                m_token = m_scanner.next();
                if (m_token == tkEqual) {
                    m_token = m_scanner.next();
                    if (m_token == tkInteger && first) {
                        m_numbers.append(m_scanner.toInt());
                    } else if (m_token == tkInteger && m_numbers.size() == 1) {
                        for (int n = m_numbers.first() + 1; n <= m_scanner.toInt(); ++n)
                            m_numbers.append(n);
                    }
                }
            }
        }
        if (m_token != tkEndOfLine && m_token != tkEnd) {
            const QStringView rest = lineText(line, m_scanner.tokenColumn());
            if (rest.contains(QLatin1String(":="))) {
                qsizetype from = 0;
                for (;;) {
                    const QRegularExpressionMatch match = inlineAssignment.match(rest, from);
                    if (!match.hasMatch()) break;
                    m_numbers.append(match.capturedView(1).toInt());
                    if (kind == 0) kind = 1;
                    from = match.capturedStart() + 6;
                }
            }
        }
        nextLine();
    }
    addVariables(kind, isInt);
}

void QMugenSyntaxHierarchy::addVariables(int kind, bool isInt)
{
    if (kind == 0 || m_numbers.isEmpty()) return;
    QHierarchyItem* stateDef = m_lastStateDef ? m_lastStateDef : &m_root;
    QVarUsageItem* row = m_variables.children.at(isInt ? 0 : 1);
    for (const int number : std::as_const(m_numbers)) {
        if (number < 0 || number >= row->children.size()) continue;
        QVarUsageItem* variable = row->children.at(number);
        bool listed = false;
        for (const QVarUsageItem* leaf : std::as_const(variable->children))
            listed = listed || leaf->state == stateDef;
        if (listed) continue;
        QVarUsageItem* leaf = takeUsage();
        leaf->parent = variable;
        leaf->state = stateDef;
        leaf->index = -1;
        variable->children.append(leaf);
    }
}

void QMugenSyntaxHierarchy::update(const QString& text)
{
    hideRows();
    strip(&m_root);
    strip(&m_variables);
    m_lastStateDef = nullptr;
    m_commandGroup = nullptr;
    m_commandCount = 0;
    m_stateDefCount = 0;
    if (text.isEmpty()) return;

    m_text = text;
    m_lineStarts.clear();
    m_lineStarts.append(0);
    for (qsizetype i = 0; i < text.size(); ++i)
        if (text.at(i).unicode() == '\n') m_lineStarts.append(int(i + 1));

    m_scanner.setText(text);
    m_token = m_scanner.next();
    while (m_token != tkEnd && m_token != tkLeftBracket)
        nextLine();

    for (int row = 0; row < 2; ++row) {
        QVarUsageItem* top = takeUsage();
        top->parent = &m_variables;
        top->index = row;
        m_variables.children.append(top);
        for (int number = 0, count = row == 0 ? 60 : 40; number < count; ++number) {
            QVarUsageItem* variable = takeUsage();
            variable->parent = top;
            variable->index = number;
            top->children.append(variable);
        }
    }

    QString word;
    QString display;
    while (m_token == tkLeftBracket) {
        QHierarchyItem* node = takeItem();
        node->line = m_scanner.line();
        word.clear();
        readHeader(&word, &display);
        if (isWord(word, "state")) {
            node->name = display;
            stateSection(node);
            attach(node, m_lastStateDef ? m_lastStateDef : &m_root);
        } else if (isWord(word, "command")) {
            if (!m_commandGroup) {
                m_commandGroup = takeItem();
                m_commandGroup->type = QStringLiteral("commands");
                m_commandGroup->name = tr("Commands");
                m_commandGroup->line = node->line;
                attach(m_commandGroup, &m_root);
            }
            commandSection(node);
        } else if (isWord(word, "statedef")) {
            node->name = display;
            m_lastStateDef = node;
            ++m_stateDefCount;
            stateDefSection(node);
            attach(node, &m_root);
        } else if (isWord(word, "begin")) {
            node->type = QStringLiteral("anim");
            node->name = word + QLatin1Char(' ') + display;
            while (m_token != tkEnd && m_token != tkLeftBracket)
                nextLine();
            attach(node, &m_root);
        } else {
            node->name = word;
            const bool quotes = word.endsWith(QLatin1String("quotes"), Qt::CaseInsensitive);
            if (isWord(word, "info"))
                node->type = QStringLiteral("info");
            else if (isWord(word, "data") || isWord(word, "size") || isWord(word, "velocity") ||
                     isWord(word, "movement"))
                node->type = QStringLiteral("const");
            else if (quotes)
                node->type = QStringLiteral("quote");
            else
                node->type = word.toLower();
            keyLines(node, quotes);
            attach(node, &m_root);
        }
    }
    m_text.clear();
    showRows(visibleTreeRows());
    emit updated();
}
