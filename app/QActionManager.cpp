#include "QActionManager.h"

#include "QActionList.h"
#include "QActionTexts.h"
#include "QIconsetManager.h"
#include "QUserDialogs.h"
#include "QXmlParser.h"

#include <QAction>
#include <QHash>
#include <QPointer>
#include <QSaveFile>
#include <QWidget>
#include <QXmlStreamWriter>

namespace {

const QString rootElement = QStringLiteral("shortcuts");
const QString shortcutElement = QStringLiteral("shortcut");
const QString actionAttribute = QStringLiteral("action");
const QString keysAttribute = QStringLiteral("keys");

// The menu text without its mnemonic and ellipsis, for lists and tool buttons.
QString plainText(const QString& text)
{
    QString plain;
    plain.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text.at(i) == QLatin1Char('&')) {
            if (i + 1 < text.size() && text.at(i + 1) == QLatin1Char('&')) plain += text.at(++i);
            continue;
        }
        plain += text.at(i);
    }
    if (plain.endsWith(QLatin1String("..."))) plain.chop(3);
    return plain.trimmed();
}

// A menu shows what follows a tab in the text as the key, so the action shows its key without owning
// a shortcut that would compete with the key action.
void applyTexts(QAction* action, const QActionInfo& info)
{
    QString text = QActionTexts::text(info.textId);
    if (text.isEmpty()) text = info.name;
    QString toolTip = QActionTexts::toolTip(info.textId);
    if (toolTip.isEmpty()) toolTip = plainText(text);
    const QKeySequence keys = info.keyAction ? info.keyAction->shortcut() : QKeySequence();

    action->setIconText(plainText(text));
    action->setText(keys.isEmpty() ? text
                                   : text + QLatin1Char('\t') + keys.toString(QKeySequence::NativeText));
    action->setToolTip(toolTip);
    action->setStatusTip(toolTip);
}

} // namespace

QActionManager::QActionManager(QWidget* parentWindow)
    : QAbstractTableModel(parentWindow), window(parentWindow), list(new QActionList(this))
{}

QActionManager::~QActionManager()
{
    const QList<QAction*> owned = keys;
    keys.clear();
    qDeleteAll(owned);
}

QAction* QActionManager::add(const QList<int>& scopes, const QString& name, unsigned textId, bool checkable,
                             QObject* receiver, const char* member, const char* enabler)
{
    QAction* action = create(scopes, name, textId, checkable);
    if (receiver && member) {
        if (checkable)
            connect(action, SIGNAL(toggled(bool)), receiver, member);
        else
            connect(action, SIGNAL(triggered()), receiver, member);
    }
    if (receiver && enabler) connect(receiver, enabler, action, SLOT(setEnabled(bool)));
    return action;
}

QAction* QActionManager::create(const QList<int>& scopes, const QString& name, unsigned textId,
                                bool checkable)
{
    QActionInfo info;
    info.textId = textId;
    info.name = name;
    info.setScopes(scopes);

    auto* action = new QAction(window ? static_cast<QObject*>(window) : this);
    action->setCheckable(checkable);
    info.attachTo(action);
    applyTexts(action, info);

    const int row = int(registered.size());
    beginInsertRows(QModelIndex(), row, row);
    registered.append(action);
    endInsertRows();
    if (info.inScope(currentScope)) list->append(action);

    connect(action, &QAction::changed, this, [this, action]() { actionChanged(action); });
    connect(action, &QObject::destroyed, this, [this, action]() { forget(action); });
    return action;
}

QAction* QActionManager::find(const QString& name) const
{
    for (QAction* action : registered)
        if (QActionInfo::of(action).name == name) return action;
    return nullptr;
}

bool QActionManager::setShortcut(QAction* action, const QKeySequence& sequence)
{
    if (!QActionInfo::has(action) || !registered.contains(action)) return false;
    QActionInfo info = QActionInfo::of(action);

    QAction* shared = nullptr;
    if (!sequence.isEmpty()) {
        for (QAction* key : std::as_const(keys)) {
            if (key->shortcut() == sequence) {
                shared = key;
                break;
            }
        }
    }
    if (shared && shared == info.keyAction) return true;

    if (shared) {
        for (QAction* other : std::as_const(registered)) {
            if (other == action) continue;
            const QActionInfo otherInfo = QActionInfo::of(other);
            if (otherInfo.keyAction == shared && info.conflictsWith(otherInfo)) {
                QUserDialogs::warning(
                    tr("Conflict!"),
                    tr("This shortcut conflict with another that resides in the same scope."));
                return false;
            }
        }
    }

    if (info.keyAction) {
        release(info.keyAction);
        info.keyAction = nullptr;
    }
    if (!sequence.isEmpty()) {
        if (!shared) shared = makeKeyAction(sequence);
        shared->setData(useCount(shared) + 1);
        info.keyAction = shared;
    }
    info.attachTo(action);
    applyTexts(action, info);
    return true;
}

QKeySequence QActionManager::shortcut(const QAction* action) const
{
    const QAction* key = QActionInfo::of(action).keyAction;
    return key ? key->shortcut() : QKeySequence();
}

int QActionManager::useCount(const QAction* keyAction)
{
    return keyAction ? keyAction->data().toInt() : 0;
}

QAction* QActionManager::makeKeyAction(const QKeySequence& sequence)
{
    auto* key = new QAction(this);
    key->setShortcut(sequence);
    key->setData(0);
    connect(key, &QAction::triggered, this, &QActionManager::shortcutTriggered);
    keys.append(key);
    if (window) window->addAction(key);
    return key;
}

void QActionManager::release(QAction* keyAction)
{
    const int count = useCount(keyAction) - 1;
    if (count > 0) {
        keyAction->setData(count);
        return;
    }
    dropKeyAction(keyAction);
}

void QActionManager::dropKeyAction(QAction* keyAction)
{
    if (window) window->removeAction(keyAction);
    keys.removeAll(keyAction);
    delete keyAction;
}

void QActionManager::actionChanged(QAction* action)
{
    const int row = int(registered.indexOf(action));
    if (row < 0) return;
    emit dataChanged(index(row, 0), index(row, 1));
    list->refresh(action);
}

// An editor that goes away takes its actions along; its keys must not keep firing into nothing.
void QActionManager::forget(QAction* action)
{
    const int row = int(registered.indexOf(action));
    if (row < 0) return;
    list->remove(action);
    beginRemoveRows(QModelIndex(), row, row);
    registered.removeAt(row);
    endRemoveRows();

    // The action's own info died with it, so the counts are taken again from those that are left.
    QHash<QAction*, int> uses;
    for (QAction* other : std::as_const(registered))
        if (QAction* key = QActionInfo::of(other).keyAction) ++uses[key];
    const QList<QAction*> current = keys;
    for (QAction* key : current) {
        const int count = uses.value(key);
        if (count > 0)
            key->setData(count);
        else
            dropKeyAction(key);
    }
}

void QActionManager::shortcutTriggered()
{
    auto* key = qobject_cast<QAction*>(sender());
    if (!key || currentScope < 0 || currentScope >= QActionInfo::NoScope) return;
    // Collected first: what an action does may register, delete or rebind actions.
    QList<QPointer<QAction>> targets;
    for (QAction* action : std::as_const(registered)) {
        const QActionInfo info = QActionInfo::of(action);
        if (info.keyAction == key && (info.inScope(QActionInfo::Everywhere) || info.inScope(currentScope)))
            targets.append(action);
    }
    for (const QPointer<QAction>& action : std::as_const(targets))
        if (action) action->activate(QAction::Trigger);
}

bool QActionManager::save(const QString& path) const
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return false;
    QXmlStreamWriter xml(&file);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement(rootElement);
    for (QAction* action : registered) {
        const QActionInfo info = QActionInfo::of(action);
        if (!info.keyAction) continue;
        xml.writeEmptyElement(shortcutElement);
        xml.writeAttribute(actionAttribute, info.name);
        xml.writeAttribute(keysAttribute, info.keyAction->shortcut().toString(QKeySequence::PortableText));
    }
    xml.writeEndElement();
    xml.writeEndDocument();
    return !xml.hasError() && file.commit();
}

int QActionManager::load(const QString& path)
{
    QXmlParser xml(path);
    if (!xml.isOpen() || !xml.findRoot(rootElement)) return 0;
    int applied = 0;
    while (xml.nextElement()) {
        if (xml.name() != shortcutElement) continue;
        QAction* action = find(xml.attribute(actionAttribute));
        if (!action) continue;
        const QKeySequence sequence =
            QKeySequence::fromString(xml.attribute(keysAttribute), QKeySequence::PortableText);
        if (setShortcut(action, sequence)) ++applied;
    }
    return applied;
}

void QActionManager::setScope(int scope)
{
    currentScope = scope;
    list->setActions(actionsOfScope(scope));
}

QList<QAction*> QActionManager::actionsOfScope(int scope) const
{
    QList<QAction*> result;
    for (QAction* action : registered)
        if (QActionInfo::of(action).inScope(scope)) result.append(action);
    return result;
}

void QActionManager::retranslate()
{
    for (QAction* action : std::as_const(registered))
        applyTexts(action, QActionInfo::of(action));
    emit headerDataChanged(Qt::Horizontal, 0, 1);
}

int QActionManager::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(registered.size());
}

int QActionManager::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : 2;
}

QVariant QActionManager::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() ||
        !checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const QAction* action = registered.at(index.row());
    if (index.column() == 0) {
        if (role == Qt::DisplayRole) return action->toolTip();
        if (role == Qt::DecorationRole && iconsetManager)
            return iconsetManager->icon(QActionInfo::of(action).name);
        return {};
    }
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        return shortcut(action).toString(QKeySequence::PortableText);
    return {};
}

QVariant QActionManager::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    if (section == 0) return tr("Function");
    if (section == 1) return tr("Keys");
    return {};
}

Qt::ItemFlags QActionManager::flags(const QModelIndex& index) const
{
    Qt::ItemFlags result = QAbstractTableModel::flags(index);
    if (index.isValid()) result |= Qt::ItemNeverHasChildren;
    if (index.isValid() && index.column() == 1) result |= Qt::ItemIsEditable;
    return result;
}

bool QActionManager::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::EditRole || index.column() != 1 || !index.isValid() ||
        !checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return false;
    // A key editor hands over a sequence, a line editor the text the column shows.
    const QKeySequence sequence =
        value.metaType() == QMetaType::fromType<QKeySequence>()
            ? value.value<QKeySequence>()
            : QKeySequence::fromString(value.toString(), QKeySequence::PortableText);
    return setShortcut(registered.at(index.row()), sequence);
}
