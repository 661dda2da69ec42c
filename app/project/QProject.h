#pragma once

#include "QMessageList.h"
#include "QProjectContext.h"
#include "QProjectFileEntry.h"
#include "QProjectTypes.h"

#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>

class QAnimations;
class QCommands;
class QDefinitions;
class QRGBPal;
class QSounds;
class QSprites;
class QSyntaxTextEditor;

// One open piece of M.U.G.E.N. content: a character, stage, storyboard, font, system screen or fight
// effects set. It owns the models of every file its definitions name and loads, saves, backs up and
// closes that set in one fixed order. Every question for the user (a file name, a sprite version) is a
// signal with a result, answered by the editor or the command-line tool; an unanswered question reads
// as a cancel.
class QProject : public QObject, public QProjectContext
{
    Q_OBJECT
public:
    QProject(uint cacheType, bool cacheCompression, QObject* parent = nullptr);
    // Made with the "cache_type" and "cache_compression" settings.
    explicit QProject(QObject* parent = nullptr);
    ~QProject() override;

    // Per-project variables; "proj_path" is the folder of the last open or save dialog.
    QMap<QString, QString> variables;

    // Opens from a definitions file. codepage is the configured codec of the text files; backup first
    // copies every file into a new time-stamped folder; copy loads without taking over the file names
    // (a backup being loaded). Each named file is looked for in every spelling of its name's bytes; the
    // names found in none are told to the user. False when the definitions can't be read or progress
    // was stopped; the caller then deletes the project.
    bool fromFile(const QString& path, uint codepage, bool backup = false, bool copy = false);
    // Saves every file to its known path, asking for the files that have none yet.
    bool save();
    // Saves as: every file that the definitions name goes beside the new definitions under that name,
    // from its model or copied as it is, so that the copy opens with all that the original has; a file
    // that the engine finds in its own folders stays there. A name that the original has no file for
    // either is told after saving. Models with content that the definitions don't name go where
    // saveFileName() answers. When a named file can't be written (its name leads out of the folder, the
    // writing fails) the user is told which, and the definitions are not written: they come last, so a
    // failure never leaves them naming files that are not there. With copy the models keep their paths.
    bool toFile(const QString& path, bool copy);
    // Asks for a name (and for sprites a version) and saves one file; index picks the state file.
    void saveFile(QProjectFileType kind, bool copy, int index);
    // Writes every file into a new time-stamped folder under the project's "backup" folder; the models
    // keep their paths and modified flags.
    bool backup();
    // Writes the whole project under folder as name.def for a test run; written receives the paths
    // of the definitions and the sprite file.
    bool saveTestCopy(const QString& folder, const QString& name, QStringList* written);

    bool canClose();
    bool isEmpty();

    // Runs every model's check, so that the issue list holds the findings of all files.
    void check();

    QSyntaxTextEditor* addStatesFile(const QString& name);
    void moveStatesFile(int from, int to);
    void removeStatesFile(int index);

    QProjectType type() const;
    QString displayName() const;
    void setDisplayName(const QString& name);
    QDefinitions* definitions() const { return defs; }
    QSprites* sprites() const { return spr; }
    QSounds* sounds() const { return snd; }
    QAnimations* animations() const { return anims; }
    QSyntaxTextEditor* animationText() const { return airText; }
    QCommands* commands() const { return cmds; }
    QSyntaxTextEditor* states(int index) const { return stateFiles.value(index); }
    int statesCount() const { return int(stateFiles.size()); }
    // Every file the definitions named at the last open, in loading order, with what became of it.
    const QList<QProjectFileEntry>& fileEntries() const { return entries; }
    // The names of fileEntries() that no file was found for, the engine's common states aside.
    QStringList missingFiles() const;
    // The files the last toFile() wrote, the definitions first; and why it failed, when it did.
    const QStringList& writtenFiles() const { return written; }
    const QString& saveError() const { return saveProblem; }
    // The model file that saveFileName() is being asked about: its current path, and for a state file
    // its index. Lets an answer keep a file's name when the whole project moves.
    QString savingPath() const;
    int savingIndex() const { return savingState; }
    // Opens an old single-file font: its definitions text and sprites replace what the project holds.
    bool fromFontFile(const QString& path);

    QProjectType projectType() const override;
    quint32 mugenVersion() const override;
    QMessageList* messageList() const override;

Q_SIGNALS:
    // The path the user chose for a file of that kind, starting in path; empty to skip it.
    QString saveFileName(QProjectFileType file, const QString& path);
    // The sprite file version to save in; 0 to cancel.
    quint32 spritesVersionToSave(quint32 currentVersion);
    // The receiver clears allow to stop the operation.
    void progress(uint pos, uint max, bool& allow);
    void nameChanged(QProject* project, const QString& name);
    void typeChanged(QProject* project);
    void versionChanged(QProject* project);
    // The sprite file needs the character's palette and the project has none: the receiver fills it.
    void charPalette(QRGBPal* palette);

private:
    struct Step;
    struct Placement;

    QSyntaxTextEditor* makeStatesFile(int index);
    void renumberStates();
    void refreshMessages();
    void passVersion();
    void attachAnimations();
    QString askFileName(QProjectFileType kind, int index);
    bool writeFile(QProjectFileType kind, int index, bool onlyModified, Step& step);
    static QString backupFolder(const QString& base);
    // A name from the definitions as a path inside another folder: no leading slash, no "..".
    static QString inside(const QString& folder, const QString& name);
    void backupCopy(const QString& source, const QString& name) const;
    QSyntaxTextEditor* loadedStates(const QString& name) const;
    // The file a name of the definitions stands for, in any spelling of the name's bytes.
    QString findNamed(const QString& base, const QString& name, bool stage = false) const;
    bool isCommonStates(const QString& name) const;
    void reportMissing() const;
    // Where save as puts each named file; unwritable and lacking receive the names it can't write and
    // the names the project has no file for, named the state files that names stand for.
    QList<Placement> placeFiles(const QString& folder, QStringList* unwritable, QStringList* lacking,
                                QList<const QSyntaxTextEditor*>* named) const;
    bool writePlaced(const Placement& placement, bool copy, quint32 spritesVersion);

    mutable QMessageList issues;
    QDefinitions* defs;
    QSyntaxTextEditor* airText;
    QSprites* spr;
    QSounds* snd;
    QAnimations* anims;
    QCommands* cmds;
    QList<QSyntaxTextEditor*> stateFiles;
    QList<QProjectFileEntry> entries;
    QString name;
    QProjectFileType savingKind = pftDefinitions;
    int savingState = -1;
    QString backupTarget;
    QStringList written;
    QString saveProblem;
};
