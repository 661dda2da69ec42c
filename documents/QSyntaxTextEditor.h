#pragma once

#include "QElementTextEditor.h"
#include "QProjectFile.h"
#include "QTextFileLines.h"

#include <QMap>
#include <QTextCursor>
#include <QTimer>

class QSingletonParamGroup;
class QSyntaxHierarchy;
class QSyntaxProcessor;
class QSyntaxTextEditorData;

// A text file of a project: the element document that models bind to, its syntax processor (colours,
// findings, folding, outline), loading and saving in the file's own encoding, and the file's issues.
//
// Before the models hear of an edit, parameters are bound to their sections and the first section of
// each fixed kind is kept at hand, so that every model built on the text finds them in step.
//
// The outline and the issues are rebuilt one second after the last edit, never while typing.
class QSyntaxTextEditor : public QElementTextEditor, public QProjectFile
{
    Q_OBJECT
public:
    QSyntaxTextEditor(QProjectFileType fileType, QProjectContext* project = nullptr, bool readOnly = false,
                      quint32 mugenVersion = 0x1010000, bool hierarchyEnabled = true,
                      QObject* parent = nullptr);
    ~QSyntaxTextEditor() override;

    // The language of a text by its beginning: M.U.G.E.N. text when it starts, after white space, with
    // ";" or "["; Lua when "function" stands as a word anywhere but at the very start; else none.
    static int detectLanguage(const QString& text);

    QSyntaxProcessor* processor() const { return m_processor; }
    QSyntaxHierarchy* hierarchy() const;
    int language() const;
    // Replaces the processor when the language differs; every block is read again.
    void setLanguage(int type);

    quint32 mugenVersion() const { return m_mugenVersion; }
    void setMugenVersion(quint32 version);

    // Reads a file: decodes it in the codec that reads its bytes exactly (QCharsetDetector, with codec
    // as the configured one), picks the language, and takes the file's name and path unless
    // keepIdentity. False, with nothing changed, when the file can't be read.
    bool load(const QString& path, int codec = 0, bool keepIdentity = false);
    // Reads the file again in the document's codec as it stands, keeping title and path: the user chose
    // that codec.
    bool reload(const QString& path);
    // Writes the document in its codec (or UTF-8 when forced). Lines that were not edited keep their
    // bytes and line ends; edited and new lines take the file's usual line end. When an edited line holds
    // characters the codec can't hold, the user is told which and where before anything is written, and
    // only writes them as "?" by choosing to. The old file stays as it was when writing fails or is
    // refused. Unless asCopy, the document becomes unmodified and takes the path.
    bool save(const QString& path, bool forceUtf8 = false, bool asCopy = false);
    // Saves to the document's path; false when that file doesn't exist.
    bool save();
    // The project's way in: load() with codepage as the fallback codec; with copy (a backup being
    // loaded) the document keeps its own name and path.
    virtual bool fromFile(const QString& path, uint codepage, bool copy = false);
    // The project's way out: save() in the document's codec; with copy the document keeps its name,
    // path and modified flag.
    virtual bool toFile(const QString& path, bool copy = false);
    // Empties the document and forgets its file and encoding.
    virtual void clear();
    // True unless a modified document with a file name is not to be discarded by the user.
    bool canClose();

    QString filePath() const;
    QString fileTitle() const;
    // The text exactly as the blocks hold it, lines joined by LF.
    QString text() const;
    // The bytes of a line as the file has them while it is unchanged; else encoded in the codec.
    QByteArray lineBytes(const QTextBlock& block) const;
    // Index into the encoding table; the next save writes in it.
    int codec() const;
    void setCodec(int index);
    QString codecName() const;
    // The line end that edited and new lines get.
    QTextFileLines::LineEnd lineEnd() const { return source.lineEnd(); }
    bool isReadOnly() const { return readOnly; }
    int errorCount() const;

    // The position of a state file in its project; the issues of a state file carry it.
    int fileIndex() const { return m_fileIndex; }
    void setFileIndex(int index) { m_fileIndex = index; }

    // The cursor of the scripting interface.
    QTextCursor& scriptCursor() { return m_scriptCursor; }
    // The first section of each fixed kind in the text, by sub type (QTextElementSubType).
    QMap<int, QSingletonParamGroup*> groups;
    QSingletonParamGroup* singletonGroup(int subType) const { return groups.value(subType); }

    // The pause after the last edit before the outline and issues are rebuilt, 1000 ms unless changed.
    int hierarchyDelay() const { return m_hierarchyDelay; }
    void setHierarchyDelay(int milliseconds) { m_hierarchyDelay = milliseconds; }
    bool isHierarchyPending() const { return hierarchyTimer.isActive(); }

    bool canDiscard() override;
    bool isModified() override;
    bool isEmpty() override;
    void check() override;

    static constexpr int DefaultHierarchyDelay = 1000;

Q_SIGNALS:
    void hierarchyUpdated();
    // The document took another file's identity: file watching moves from the old path to the new.
    void pathChanged(const QString& oldPath, const QString& newPath);

public Q_SLOTS:
    void updateHierarchy();
    void docChanged();

protected:
    // Binds parameters to sections and keeps the fixed sections at hand, then tells the models.
    // Models that derive from the editor let this run first and then read the changes.
    void emitUpdate(QList<QTextElementChange>& changes) override;
    // The question asked before unsaved changes are thrown away.
    virtual QString discardQuestion() const;

private:
    void updateGroups(const QList<QTextElementChange>& changes);
    bool readsParams(const QList<QTextElementChange>& changes) const;
    void setIdentity(const QString& path);
    bool take(const QString& path, const QByteArray& bytes, int codec, bool bom, bool keepIdentity);
    bool acceptUnwritable(const QString& path, int codec,
                          const QList<QTextFileLines::Unwritable>& unwritable) const;
    void updateIssues();

    QSyntaxProcessor* m_processor = nullptr;
    // A processor made on a document with text ignores edits until the event loop has let it read
    // that text; processorsMade tells the newest such processor from older ones.
    bool processorWaits = false;
    int processorsMade = 0;
    QSyntaxTextEditorData* data;
    QTextCursor m_scriptCursor;
    QTimer hierarchyTimer;
    QTextFileLines source;
    quint32 m_mugenVersion;
    int m_hierarchyDelay = DefaultHierarchyDelay;
    int m_fileIndex = 0;
    bool hierarchyEnabled;
    bool readOnly;
};
