#pragma once

#include "AddSom.h"
#include "QInterfaceEditor.h"
#include "QQuickFindOption.h"
#include "QSounds.h"

#include <QList>
#include <QMap>
#include <QObject>
#include <QPair>
#include <QPersistentModelIndex>
#include <QPointer>

class QSound;
class QSoundWorkspace;
class QSoundsPanel;

// The page of the main window that edits a sound file. It owns no data: it shows and changes the
// QSounds of the current project, so undo covers every change. The current sound is remembered as a
// row of the model that follows inserts, moves and removals above it.
class QSoundsEditor : public QObject, public QInterfaceEditor
{
    Q_OBJECT

public:
    // The key scope of the sounds editor's commands.
    static constexpr int Scope = 6;
    static constexpr int Number = 5;

    explicit QSoundsEditor(QSoundWorkspace* workspace, QObject* parent = nullptr);
    ~QSoundsEditor() override;

    // The model shown and the project's variables ("snd_path", "proj_path"); null for none.
    void bind(QSounds* sounds, QMap<QString, QString>* variables);
    QSounds* sounds() const { return model; }
    QSoundsPanel* controls() const { return panelWidget; }
    QSoundWorkspace* soundWorkspace() const { return workspaceOf; }
    // The row of the current sound, -1 for none.
    int position() const;
    QSound* currentSound() const;
    // Other open projects an import may take from, by their shown names.
    void setImportSources(const QList<QPair<QString, QSounds*>>& sources) { importSources = sources; }
    // The description of a sound that the panel shows; dashes for none.
    static QString infoText(const QSound* sound);

    // QInterfaceEditor.
    QString title() const override { return QStringLiteral("Sounds"); }
    bool isModified() const override;
    int workspace() const override;
    QProjectFileType fileType() const override { return pftSounds; }
    int number() const override { return Number; }
    int scope() const override { return Scope; }
    void activate() override;
    void deactivate() override;
    void navigate(int fileIndex, int index, int subIndex) override;
    QWidget* panel() const override;
    void newFile() override { clear(); }
    void openFile() override { open(); }
    void saveFile() override { save(); }
    void saveFileAs() override { saveAs(); }

Q_SIGNALS:
    void enabled(bool on);
    void setMaximum(int count);
    void setSelPos(int position);
    void setPosText(const QString& text);
    void setGroup(int value);
    void setNumber(int value);
    void setInfoText(const QString& text);
    // The checked states of the play, loop and stop commands.
    void setPlaying(bool on);
    void setLooping(bool on);
    void setStopped(bool on);
    void flushFields();
    void titleChanged();

public Q_SLOTS:
    void clear();
    void open();
    virtual void save();
    virtual void saveAs();
    void undo() override;
    void redo() override;
    void cut() override;
    void copy() override;
    void paste() override;
    // Goes to the next sound (the previous one backward) whose "group,sample" matches; false and
    // "No sound found!" when none does.
    bool find(const QString& text, const QQuickFindOptions& options);
    // Gives the matching sound (every one with all) the group and sample of dest, "group,sample" with
    // either part left out to keep it; answers how many changed.
    int replace(const QString& source, const QString& dest, const QQuickFindOptions& options, bool all);
    void definePos(int position);
    // The organizer moved the sounds, or switched what it shows.
    void orgChanged(bool on);
    void orgObject(bool on);
    // Unchecks the play commands once the sound ended or could not start.
    void forceStop();
    void prevSnd();
    void nextSnd();
    void add();
    // Adds WAV files after the current sound as add() does once its files are chosen (a drop on the
    // page, ...).
    void addWavFiles(const QStringList& files);
    void del();
    void openWav();
    void saveWav();
    void duplicate();
    void delGroup();
    void renameGroup();
    void play(bool on);
    void playLoop(bool on);
    void stop(bool on);
    void fileExport();
    void fileImport();
    void projImport();
    void selPosChanged(int position);
    void prevGrp();
    void grpChanged(int value);
    void nextGrp();
    void numChanged(int value);
    // Shows the current position again after the model changed.
    void updateSel();

protected:
    QMap<QString, QString>* projectVariables() const { return variables; }
    // A folder to start a file dialog in: the project's key, else "proj_path".
    QString startFolder(const char* key) const;
    void rememberFolder(const char* key, const QString& file);

private:
    void showSound(int position);
    void startPlaying(bool loop);
    int matchFrom(const QString& text, const QQuickFindOptions& options, int start, bool backward,
                  bool wrap) const;
    // Answers a pattern on "group,sample" texts; invalid when the pattern is.
    static bool matches(const QString& text, const QQuickFindOptions& options, uint group, uint sample);
    // Adds WAV files after the current sound; answers the row of the first added, or -1.
    int addFiles(const QStringList& files);
    QList<uint> rangeRows(int group, bool allNumbers, int from, int to) const;
    static QWidget* dialogParent();

    QSoundWorkspace* workspaceOf;
    QPointer<QSounds> model;
    QMap<QString, QString>* variables = nullptr;
    QSoundsPanel* panelWidget;
    QPersistentModelIndex current;
    int lastRow = -1;
    int block = 0;
    bool active = false;
    QList<QPair<QString, QSounds*>> importSources;
    AddSom::Values addValues;
};
