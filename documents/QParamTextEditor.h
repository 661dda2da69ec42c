#pragma once

#include "QElementTextEditor.h"
#include "QProjectFile.h"
#include "QTextFileFormat.h"

#include <QMap>

class QSingletonParamGroup;

// A text file of a project whose sections hold parameters: the document of definitions and commands.
// Before its models hear of an edit it binds parameters to their sections and keeps the first section
// of each fixed kind at hand. It reads and writes its file in the file's own format, so that a file
// saved without an edit keeps its bytes.
class QParamTextEditor : public QElementTextEditor, public QProjectFile
{
    Q_OBJECT
public:
    QParamTextEditor(QProjectFileType fileType, QObject* parent = nullptr);
    ~QParamTextEditor() override;

    // The first section of each sub type in the text.
    QMap<int, QSingletonParamGroup*> groups;
    QSingletonParamGroup* singletonGroup(int subType) const { return groups.value(subType); }

    // Reads a file with the codec at codepage as the fallback of charset detection. With copy the
    // document keeps its file name (a backup being loaded). False, with nothing changed, when the file
    // can't be read.
    virtual bool fromFile(const QString& path, uint codepage, bool copy = false);
    // Writes the text in the format it was read in. With copy the document keeps its file name and
    // modified flag. A failed write leaves the file on disk as it was.
    virtual bool toFile(const QString& path, bool copy = false);
    // Writes to the file it was read from or last saved to.
    bool save();
    // Empties the text and forgets the file.
    virtual void clear();

    QString filePath() const { return path; }
    const QTextFileFormat& format() const { return fileFormat; }
    // The text as saving would write it, with LF line ends.
    QString text() const;

    bool canDiscard() override;
    bool isModified() override;
    bool isEmpty() override;
    void check() override;

protected:
    // Binds parameters and sections, then tells the models.
    void emitUpdate(QList<QTextElementChange>& changes) override;
    // The binding alone, for subclasses that bring their own list in step before the models hear.
    void bindChanges(const QList<QTextElementChange>& changes);
    // The question asked before unsaved changes are thrown away.
    virtual QString discardQuestion() const = 0;

private:
    void updateGroups(const QList<QTextElementChange>& changes);

    QString path;
    QTextFileFormat fileFormat;
};
