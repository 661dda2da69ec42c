#include "QSyntaxTextEditor.h"

#include "QCharsetDetector.h"
#include "QParamGroup.h"
#include "QSingletonParamGroup.h"
#include "QSyntaxFormats.h"
#include "QSyntaxHierarchy.h"
#include "QSyntaxProcessor.h"
#include "QSyntaxProcessorFactory.h"
#include "QSyntaxTextEditorData.h"
#include "QTextElementType.h"
#include "QTextEncoding.h"
#include "QUserDialogs.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace {

int utf8Index()
{
    return QTextEncoding::codecIndex("UTF-8");
}

} // namespace

QSyntaxTextEditor::QSyntaxTextEditor(QProjectFileType fileType, QProjectContext* project, bool readOnly,
                                     quint32 mugenVersion, bool hierarchyEnabled, QObject* parent)
    : QElementTextEditor(true, parent), QProjectFile(fileType, project),
      data(new QSyntaxTextEditorData(this, document)), m_scriptCursor(document), m_mugenVersion(mugenVersion),
      hierarchyEnabled(hierarchyEnabled), readOnly(readOnly)
{
    if (syntaxFormats) document->setDefaultFont((*syntaxFormats)[QSyntaxFormats::Comment].font());
    data->codec = utf8Index();
    setLanguage(SyntaxMugen);
    // Lines of sections that no model knows stay unbound below their unknown header.
    setTypeEnabled(true, etUnknownGroup);
    hierarchyTimer.setSingleShot(true);
    hierarchyTimer.setTimerType(Qt::PreciseTimer);
    connect(document, &QTextDocument::contentsChanged, this, &QSyntaxTextEditor::docChanged);
    connect(&hierarchyTimer, &QTimer::timeout, this, &QSyntaxTextEditor::updateHierarchy);
}

QSyntaxTextEditor::~QSyntaxTextEditor()
{
    hierarchyTimer.stop();
    // The processor clears its colours on the way out; nothing here may react to that any more.
    disconnect(document, nullptr, this, nullptr);
    delete m_processor;
}

int QSyntaxTextEditor::detectLanguage(const QString& text)
{
    static const QRegularExpression mugen(QStringLiteral("^\\s*[;\\[]"),
                                          QRegularExpression::UseUnicodePropertiesOption);
    static const QRegularExpression lua(QStringLiteral("\\bfunction\\b"),
                                        QRegularExpression::UseUnicodePropertiesOption);
    if (mugen.match(text, 0, QRegularExpression::NormalMatch, QRegularExpression::AnchorAtOffsetMatchOption)
            .hasMatch())
        return SyntaxMugen;
    // A text that begins with "function" is not taken for Lua: the word has to follow something.
    const QRegularExpressionMatch match = lua.match(text);
    return match.hasMatch() && match.capturedStart() >= 1 ? SyntaxLua : SyntaxNone;
}

QSyntaxHierarchy* QSyntaxTextEditor::hierarchy() const
{
    return m_processor ? m_processor->hierarchy() : nullptr;
}

int QSyntaxTextEditor::language() const
{
    return m_processor ? m_processor->syntaxType() : SyntaxNone;
}

void QSyntaxTextEditor::setLanguage(int type)
{
    if (type != SyntaxMugen && type != SyntaxLua) type = SyntaxNone;
    if (m_processor && m_processor->syntaxType() == type) return;
    // Colours come and go with the processor; the text stays, so its lines are not read again.
    ++ignore;
    delete m_processor;
    m_processor = QSyntaxProcessorFactory::create(type, document, m_mugenVersion);
    connect(m_processor->hierarchy(), &QSyntaxHierarchy::updated, this, &QSyntaxTextEditor::hierarchyUpdated);
    // A new processor would wait for the event loop to read text that is already there, and ignore
    // edits until then.
    if (!document->isEmpty()) {
        m_processor->rehighlight();
        const int made = ++processorsMade;
        processorWaits = true;
        QTimer::singleShot(0, this, [this, made] {
            if (made == processorsMade) processorWaits = false;
        });
    }
    --ignore;
}

void QSyntaxTextEditor::setMugenVersion(quint32 version)
{
    // Each change checks the whole text again; the project passes its version to every file on each
    // load, mostly unchanged.
    if (version == m_mugenVersion) return;
    m_mugenVersion = version;
    if (m_processor && m_processor->syntaxType() == SyntaxMugen) m_processor->setMugenVersion(version);
}

bool QSyntaxTextEditor::load(const QString& path, int codec, bool keepIdentity)
{
    QByteArray bytes;
    if (!QTextFileLines::readFile(path, &bytes)) return false;
    const QCharsetDetector::Choice choice = QCharsetDetector::choose(bytes, codec);
    return take(path, bytes, choice.codec, choice.bom, keepIdentity);
}

bool QSyntaxTextEditor::take(const QString& path, const QByteArray& bytes, int codec, bool bom,
                             bool keepIdentity)
{
    source.read(bytes, codec, bom);
    data->codec = codec;
    const QString decoded = source.text();
    // The text is coloured once: a processor of the same language reads it as it comes in; one of
    // another language replaces the old one only when the text is there, and the old one is gone
    // before, so that it reads nothing.
    const int language = detectLanguage(decoded);
    const bool replace = !m_processor || m_processor->syntaxType() != language;
    if (replace) {
        ++ignore;
        delete m_processor;
        m_processor = nullptr;
        --ignore;
    }

    const QString title = document->metaInformation(QTextDocument::DocumentTitle);
    const QString url = document->metaInformation(QTextDocument::DocumentUrl);
    setPlainText(source.text());
    source.bind(document);
    if (replace) {
        setLanguage(language);
    } else if (processorWaits) {
        ++ignore;
        m_processor->rehighlight();
        --ignore;
    }
    document->setMetaInformation(QTextDocument::DocumentTitle, title);
    document->setMetaInformation(QTextDocument::DocumentUrl, url);
    if (!keepIdentity) setIdentity(path);

    document->setModified(false);
    updateHierarchy();
    return true;
}

bool QSyntaxTextEditor::reload(const QString& path)
{
    // The user chose the codec: it is taken as it is, and a mark of its own is still read as one.
    QByteArray bytes;
    if (!QTextFileLines::readFile(path, &bytes)) return false;
    const QByteArray mark = QTextEncoding::byteOrderMark(QTextEncoding::codec(data->codec));
    return take(path, bytes, data->codec, !mark.isEmpty() && bytes.startsWith(mark), true);
}

bool QSyntaxTextEditor::save(const QString& path, bool forceUtf8, bool asCopy)
{
    const int codec = forceUtf8 ? utf8Index() : data->codec;
    const bool bom = source.hadBom() && codec == data->codec;
    QList<QTextFileLines::Unwritable> unwritable;
    const QByteArray bytes = source.write(document, codec, bom, &unwritable);
    // What the encoding can't hold is told before anything is written; the old file is replaced only
    // once the new one is completely written.
    if (!unwritable.isEmpty() && !acceptUnwritable(path, codec, unwritable)) return false;
    if (!QTextFileLines::writeFile(path, bytes)) return false;
    if (!asCopy) {
        document->setModified(false);
        setIdentity(path);
    }
    return true;
}

bool QSyntaxTextEditor::save()
{
    const QString path = filePath();
    if (path.isEmpty() || !QFileInfo(path).isFile()) return false;
    return save(path);
}

bool QSyntaxTextEditor::fromFile(const QString& path, uint codepage, bool copy)
{
    return load(path, int(codepage), copy);
}

bool QSyntaxTextEditor::toFile(const QString& path, bool copy)
{
    return save(path, false, copy);
}

void QSyntaxTextEditor::clear()
{
    const QString old = filePath();
    setPlainText(QString());
    document->setModified(false);
    document->setMetaInformation(QTextDocument::DocumentTitle, QString());
    document->setMetaInformation(QTextDocument::DocumentUrl, QString());
    if (!old.isEmpty()) emit pathChanged(old, QString());
    data->codec = utf8Index();
    source.clear();
    updateHierarchy();
}

bool QSyntaxTextEditor::canClose()
{
    if (!document->isModified() || filePath().isEmpty()) return true;
    return QUserDialogs::question(tr("Discard changes"), discardQuestion(),
                                  QUserDialogs::Yes | QUserDialogs::No,
                                  QUserDialogs::No) == QUserDialogs::Yes;
}

bool QSyntaxTextEditor::acceptUnwritable(const QString& path, int codec,
                                         const QList<QTextFileLines::Unwritable>& unwritable) const
{
    // A few lines tell what is wrong and where; the rest are counted.
    constexpr int shown = 8;
    QStringList rows;
    for (const QTextFileLines::Unwritable& entry : unwritable.mid(0, shown)) {
        QStringList characters;
        for (const uint code : entry.characters.toUcs4()) {
            const char32_t character = code;
            characters << (code == QChar::ReplacementCharacter
                               ? tr("bytes that could not be read")
                               : QStringLiteral("%1 (U+%2)")
                                     .arg(QString::fromUcs4(&character, 1),
                                          QString::number(code, 16).toUpper().rightJustified(
                                              4, QLatin1Char('0'))));
        }
        rows << tr("line %1: %2").arg(entry.line).arg(characters.join(QStringLiteral(", ")));
    }
    if (unwritable.size() > shown) rows << tr("and %n more line(s)", nullptr, int(unwritable.size() - shown));
    const QString text =
        tr("%1 is saved in %2, which can't hold these characters:\n%3\n\nSave anyway, with \"?\" in "
           "their place?")
            .arg(QFileInfo(path).fileName(), QTextEncoding::codecName(codec), rows.join(QLatin1Char('\n')));
    return QUserDialogs::warning(tr("Characters the encoding can't hold"), text,
                                 QUserDialogs::Save | QUserDialogs::Cancel,
                                 QUserDialogs::Cancel) == QUserDialogs::Save;
}

QString QSyntaxTextEditor::discardQuestion() const
{
    return tr("Do you really want to discard the changes made in %1?").arg(fileTitle());
}

QString QSyntaxTextEditor::filePath() const
{
    return document->metaInformation(QTextDocument::DocumentUrl);
}

QString QSyntaxTextEditor::fileTitle() const
{
    return document->metaInformation(QTextDocument::DocumentTitle);
}

QString QSyntaxTextEditor::text() const
{
    // Not toPlainText(), which turns no-break spaces into spaces.
    QString result;
    result.reserve(document->characterCount());
    for (QTextBlock block = document->firstBlock(); block.isValid(); block = block.next()) {
        if (block != document->firstBlock()) result += QLatin1Char('\n');
        result += block.text();
    }
    return result;
}

QByteArray QSyntaxTextEditor::lineBytes(const QTextBlock& block) const
{
    return source.lineBytes(block, data->codec);
}

int QSyntaxTextEditor::codec() const
{
    return data->codec;
}

void QSyntaxTextEditor::setCodec(int index)
{
    data->codec = index;
}

QString QSyntaxTextEditor::codecName() const
{
    return QTextEncoding::codecName(data->codec);
}

int QSyntaxTextEditor::errorCount() const
{
    return m_processor ? m_processor->errorCount() : 0;
}

bool QSyntaxTextEditor::canDiscard()
{
    return canClose();
}

bool QSyntaxTextEditor::isModified()
{
    return document->isModified();
}

bool QSyntaxTextEditor::isEmpty()
{
    return document->isEmpty();
}

void QSyntaxTextEditor::check()
{
    updateIssues();
}

void QSyntaxTextEditor::docChanged()
{
    hierarchyTimer.start(m_hierarchyDelay);
}

void QSyntaxTextEditor::updateHierarchy()
{
    hierarchyTimer.stop();
    // The outline tells hierarchyUpdated() itself when it is rebuilt.
    QSyntaxHierarchy* outline = hierarchyEnabled ? hierarchy() : nullptr;
    if (outline)
        outline->update(text());
    else
        emit hierarchyUpdated();
    updateIssues();
}

void QSyntaxTextEditor::updateIssues()
{
    // Issues carry the line counted from 1; for a state file the second number is the file's position in
    // its project, for the others the column of the finding.
    QMessages* issues = messages();
    issues->begin();
    const bool stateFile = fileType() == pftStates;
    for (QTextBlock block = document->firstBlock(); block.isValid(); block = block.next())
        if (const auto* blockData = static_cast<const QTextEditorBlockData*>(block.userData()))
            for (const QSyntaxMessage& message : blockData->messages)
                issues->add(message.kind == SyntaxError ? 0 : 1, message.text, block.blockNumber() + 1,
                            stateFile ? m_fileIndex : message.start);
    issues->end();
}

void QSyntaxTextEditor::setIdentity(const QString& path)
{
    const QFileInfo info(path);
    const QString old = filePath();
    document->setMetaInformation(QTextDocument::DocumentTitle, info.fileName());
    document->setMetaInformation(QTextDocument::DocumentUrl, info.absoluteFilePath());
    if (old != info.absoluteFilePath()) emit pathChanged(old, info.absoluteFilePath());
}

void QSyntaxTextEditor::updateGroups(const QList<QTextElementChange>& changes)
{
    // The first section of each fixed kind is the one its model reads: when it goes, the next one of the
    // kind takes its place; a new one takes the place of those below it.
    for (const QTextElementChange& change : changes) {
        if (change.type != ElementRemoved || change.element->type() != etSingletonGroup) continue;
        const int subType = change.element->subType();
        const auto entry = groups.find(subType);
        if (entry == groups.end() || entry.value() != change.element) continue;
        if (QTextElement* next = change.element->nextExact(change.element->flags(), subType))
            entry.value() = static_cast<QSingletonParamGroup*>(next);
        else
            groups.erase(entry);
    }
    for (const QTextElementChange& change : changes) {
        QTextElement* group = change.element;
        if (change.type != ElementAdded || group->type() != etSingletonGroup || !group->valid) continue;
        if (!group->previousExact(group->flags(), group->subType()))
            groups[group->subType()] = static_cast<QSingletonParamGroup*>(group);
    }
}

bool QSyntaxTextEditor::readsParams(const QList<QTextElementChange>& changes) const
{
    for (auto it = typeCounts.cbegin(); it != typeCounts.cend(); ++it)
        if (it.key().first == etGroupParam && it.value() > 0) return true;
    // Parameters of a kind just disabled still leave their sections.
    return std::any_of(changes.cbegin(), changes.cend(), [](const QTextElementChange& change) {
        return change.element->type() == etGroupParam;
    });
}

void QSyntaxTextEditor::emitUpdate(QList<QTextElementChange>& changes)
{
    updateGroups(changes);
    // Only a document that reads parameters has any to bind; the others spare the walks along the list.
    if (readsParams(changes)) QParamGroup::bindParams(changes);
    QElementTextEditor::emitUpdate(changes);
}
