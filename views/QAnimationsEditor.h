#pragma once

#include "QAnimSpriteWorkspace.h"
#include "QAnimationPlayer.h"
#include "QAnimations.h"
#include "QSprRender.h"
#include "QSprites.h"
#include "QTextDocumentEditor.h"

#include <QList>
#include <QMap>
#include <QPair>
#include <QPoint>
#include <QPointer>
#include <QString>

#include <functional>

class QAnimation;
class QAnimationFrame;
class QAnimations;
class QAnimationsPanel;
class QSprites;
class QTextWorkspace;

// The page of the main window that edits the actions of an animation file. It owns no data: form, view
// and text all show the QAnimations of the current project, and every change goes through that model,
// so the text stays the one source of truth and its undo covers everything. The form lives in the
// left panel, the frame in the sprite workspace that the sprites editor shares; in text mode the
// document is shown in the text workspace instead.
class QAnimationsEditor : public QTextDocumentEditor
{
    Q_OBJECT

public:
    // The key scope of the animations editor's commands.
    static constexpr int Scope = 3;

    QAnimationsEditor(QAnimSpriteWorkspace* sprites, QTextWorkspace* text, QObject* parent = nullptr);
    ~QAnimationsEditor() override;

    // The models shown and the project's variables ("proj_path", "gif_path"); null for none.
    void bind(QAnimations* animations, QSprites* sprites, QMap<QString, QString>* variables);
    QAnimations* animations() const { return model; }
    QSprites* sprites() const { return spriteModel; }
    QAnimationsPanel* controls() const { return panelWidget; }
    QAnimSpriteWorkspace* spriteWorkspace() const { return spritesPage.data(); }
    // Other open projects an import may take from, by their shown names.
    void setImportSources(const QList<QPair<QString, QAnimations*>>& sources) { importSources = sources; }
    // Loads the actions of a file chosen for an import (an AIR file, or the definitions naming one);
    // the window may answer with the project's own reading. Null when nothing could be read.
    using ImportLoader = std::function<QAnimations*(const QString& path, QObject* owner)>;
    void setImportLoader(ImportLoader loader) { importLoader = std::move(loader); }

    QAnimation* currentAction() const;
    QAnimationFrame* currentFrame() const;
    int actionPosition() const;
    int framePosition() const;
    bool isTextMode() const { return textMode; }
    bool isPlaying() const { return playing; }
    // The ticks of a frame's label: the times up to and including the frame; a negative time ends the
    // sum and is what is shown.
    static int tickSum(const QAnimation* action, int frame);
    // "None", "A", "A1", "S", "AS..D..": the transparency choice a frame's blend reads as.
    static int transIndex(const QAnimationFrame* frame);
    // The frame whose sprite is the ghost under frame: the one before, and before the first the last,
    // as the action loops; -1 with fewer than two frames.
    static int onionFrame(const QAnimation* action, int frame);

    // QInterfaceEditor.
    QString title() const override
    {
        return QString::fromLatin1(QT_TRANSLATE_NOOP("QInterfaceEditor", "Animations"));
    }
    bool isModified() const override;
    int workspace() const override { return textMode ? 0 : 1; }
    QProjectFileType fileType() const override { return pftAnimations; }
    int number() const override { return 2; }
    int scope() const override { return Scope; }
    void activate() override;
    void deactivate() override;
    // index is an action; in text mode a line.
    void navigate(int fileIndex, int index, int subIndex) override;
    QWidget* panel() const override;
    void newFile() override;
    void openFile() override;
    void saveFile() override;
    void saveFileAs() override;

Q_SIGNALS:
    // Form: enabled with a model, enabled2 with an action, frameEnabled with a frame, enableNew while
    // actions may be made, transEnabled while an "AS..D.." blend takes its factors.
    void enabled(bool on);
    void enabled2(bool on);
    void enableNew(bool on);
    void frameEnabled(bool on);
    void transEnabled(bool on);
    void setMaximum(int count);
    void setFrameMaximum(int count);
    void setSelPos(int position);
    void setPosText(const QString& text);
    void setNumber(int value);
    void setName(const QString& text);
    void setFrameSelPos(int position);
    void setFramePosText(const QString& text);
    void setFrameGrp(int value);
    void setFrameNum(int value);
    void setFrameX(int value);
    void setFrameY(int value);
    void setFrameTime(int value);
    void setFrameFlip(int index);
    void setFrameTrans(int index);
    void setFrameSrc(int value);
    void setFrameDst(int value);
    void setFrameLoop(bool on);
    void setFrameScaleX(double value);
    void setFrameScaleY(double value);
    void setFrameAngle(double value);
    void setFrameIBlend(bool on);
    void setFrameIOffset(bool on);
    void setFrameIScale(bool on);
    void setFrameIAngle(bool on);
    void setOnion(bool on);
    void flushFields();
    // The text mode was switched: the window shows the other workspace.
    void workspaceChanged();
    void playChecked(bool on);
    void clsnDrawing(int type, bool on);
    // "%1 FPS" while playing, empty when it stops.
    void rateText(const QString& text);
    void statusText(const QString& text);
    // The window writes GIF files; the editor asks the file name.
    void saveGifRequested(int action, const QString& path);

public Q_SLOTS:
    // File.
    void clear();
    void open();
    virtual void save();
    virtual void saveAs();
    void cut() override;
    void copy() override;
    void paste() override;
    void undo() override;
    void redo() override;
    // Looks from the current action by number and by name, once around; false after telling the user.
    bool find(const QString& text);
    void find();
    void replace();
    // Navigation.
    void prevAnim();
    void nextAnim();
    void prevFrame();
    void nextFrame();
    void selPosChanged(int position);
    void frameSelPosChanged(int position);
    void definePos(int action, int frame = 0);
    // Actions.
    void add();
    void del();
    void duplicate();
    void editText();
    void txtModeChanged(bool on);
    void saveGIF();
    void projImport();
    void numChanged(int value);
    void nameChanged(const QString& text);
    // Playback: a loop inside playChanged(true) until stopped.
    void playChanged(bool on);
    void stopChanged();
    void forceStop();
    // Frames.
    void frameAdd();
    void frameDel();
    void frameAllTime();
    void frameAllFlip();
    void frameAllTrans();
    void frameAlign();
    void frameGrpChanged(int value);
    void frameNumChanged(int value);
    void frameXChanged(int value);
    void frameYChanged(int value);
    void frameTimeChanged(int value);
    void frameFlipChanged(int index);
    void frameTransChanged(int index);
    void frameSrcChanged(int value);
    void frameDstChanged(int value);
    void frameLoopChanged(bool on);
    void frameScaleXChanged(double value);
    void frameScaleYChanged(double value);
    void frameAngleChanged(double value);
    void frameIBlendChanged(bool on);
    void frameIOffsetChanged(bool on);
    void frameIScaleChanged(bool on);
    void frameIAngleChanged(bool on);
    // Collision boxes.
    void clsnAdd1Changed(bool on);
    void clsnAdd2Changed(bool on);
    void clsnDel();
    void clsnDelAll();
    void clsnDelAllAnim();
    void clsnSwType();
    void clsnSwDef();
    void clsnPrev();
    void clsnAllInst();
    void clsnModeExit();
    // Axis.
    void axisLeft();
    void axisUp();
    void axisRight();
    void axisDown();
    void axisChanged(QPoint axis);
    void extraAxisChanged();
    void extraAxisMoved(QPoint position);
    // Others.
    void updated();
    void modified();
    void cursorChanged(QPoint position);
    void updateSel();
    void orgChanged();
    void orgObject(QObject* object);
    void updateFromText();
    void animChanged();
    // The previous frame shown as a ghost under the current one.
    void onionChanged(bool on);

protected:
    QMap<QString, QString>* projectVariables() const { return variables; }
    QString startFolder(const char* key) const;
    void rememberFolder(const char* key, const QString& file);
    static QWidget* dialogParent();

private:
    QSprRender* view() const { return render.data(); }
    // Whether the view shows this editor's frames now.
    bool viewShown() const { return formActive && render; }
    void showAction(int position, int frame);
    void showFrame(int frame);
    void resetFrameFields();
    void refreshView();
    void moveOffset(int dx, int dy);
    void setBlend(QAnimationFrame* frame, int transIndex);
    void copyOnward(const std::function<void(QAnimationFrame* from, QAnimationFrame* to)>& copy);
    void removeSets(QAnimationFrame* frame);
    void drawBoxes(int type, bool on);
    bool frameWritable() const;
    void showLook(const QAnimationPlayer::Look& look);
    void showOnion();

    // Both belong to the window's sprite side, which may go first when the window closes.
    QPointer<QAnimSpriteWorkspace> spritesPage;
    QPointer<QSprRender> render;
    QPointer<QAnimations> model;
    QPointer<QSprites> spriteModel;
    QMap<QString, QString>* variables = nullptr;
    QAnimationsPanel* panelWidget;
    QList<QPair<QString, QAnimations*>> importSources;
    ImportLoader importLoader;
    // Raised while the editor pushes values to the form, and while it writes the model itself.
    int block = 0;
    int writing = 0;
    bool formActive = false;
    bool textMode = false;
    bool playing = false;
    bool onion = false;
    int drawingType = -1;
    int restoredAction = -1;
    int restoredFrame = 0;
    QAnimationPlayer player;
};
