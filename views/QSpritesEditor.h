#pragma once

#include "AddSpr.h"
#include "QInterfaceEditor.h"
#include "QSprites.h"
#include "SaveItem.h"

#include <QImage>
#include <QList>
#include <QMap>
#include <QObject>
#include <QPoint>
#include <QPointer>

class AlignDlg;
class QAnimSpriteWorkspace;
class QSprRender;
class QSprite;
class QSpritesPanel;

// The page of the main window that edits a sprite file. It owns no data: it shows and changes the
// QSprites of the current project and keeps its place in it as the model's current index. Every change
// goes through the model, so undo covers all of it.
class QSpritesEditor : public QObject, public QInterfaceEditor
{
    Q_OBJECT

public:
    // The key scope of the sprites editor's commands.
    static constexpr int Scope = 2;

    explicit QSpritesEditor(QAnimSpriteWorkspace* workspace, QObject* parent = nullptr);
    ~QSpritesEditor() override;

    // The model shown and the project's variables ("spr_path", "proj_path"); null for none.
    void bind(QSprites* sprites, QMap<QString, QString>* variables);
    QSprites* sprites() const { return model; }
    QSpritesPanel* controls() const { return panelWidget; }
    QAnimSpriteWorkspace* spriteWorkspace() const { return workspaceOf; }
    int position() const;
    QSprite* currentSprite() const;
    // Other open projects a sprite import may take from, by their shown names.
    void setImportSources(const QList<QPair<QString, QSprites*>>& sources) { importSources = sources; }
    // The align tools window, once alignTools() has made it.
    AlignDlg* alignTool() const;

    // QInterfaceEditor.
    QString title() const override { return QStringLiteral("Sprites"); }
    bool isModified() const override;
    int workspace() const override { return 1; }
    QProjectFileType fileType() const override { return pftSprites; }
    int number() const override { return 1; }
    int scope() const override { return Scope; }
    void activate() override;
    void deactivate() override;
    void navigate(int fileIndex, int index, int subIndex) override;
    QWidget* panel() const override;
    void newFile() override { clear(); }
    void openFile() override { open(); }
    void undo() override;
    void redo() override;
    void cut() override;
    void copy() override;
    void paste() override;

    // Sprites matching a text "group,number" (a regular expression, or a wildcard pattern); the first
    // match after the current one becomes current. False when none matches.
    bool find(const QString& text, bool wildcard);
    // Sets group and number of the current sprite from "group,number" (a missing part keeps its value).
    bool replace(const QString& text);

Q_SIGNALS:
    void enabled(bool on);
    void setMaximum(int count);
    void setSelPos(int position);
    void setPosText(const QString& text);
    void setGroup(int value);
    void setNumber(int value);
    void setX(int value);
    void setY(int value);
    void setDecLoad(bool on);
    void setSwitchPal(bool on);
    void setTrans(bool on);
    void setInfoText(const QString& text);
    void setOnionSkin(bool on);
    void setOnionSelPos(int position);
    void setOnionText(const QString& text);
    void flushFields();
    // The sprite shown changed (the palettes panel follows the palette of the sprite).
    void spriteShown(int position);
    // The palette the view uses, by its index in the model (-1: the sprite's own).
    void paletteSelected(int index);
    void titleChanged();
    // The sprite sheet importer lives with the window's tools; the window opens it on this signal.
    void sheetImportRequested();

public Q_SLOTS:
    void clear();
    void open();
    virtual void save();
    virtual void saveAs();
    void add();
    void del();
    void openImg();
    void saveImg();
    void saveImgAlign();
    void crop();
    void duplicate();
    void delGroup();
    void renameGroup();
    void alignTools();
    void imgEditor();
    void splitRGB();
    void fileExport();
    void fileImport();
    void projImport();
    void sheetImport();
    void frameSpr(bool on);
    void selPosChanged(int position);
    void prevGrp();
    void nextGrp();
    void grpChanged(int value);
    void numChanged(int value);
    void xChanged(int value);
    void yChanged(int value);
    void axisLeft();
    void axisUp();
    void axisRight();
    void axisDown();
    void decLoadChanged(bool on);
    void transChanged(bool on);
    void switchPalChanged(bool on);
    void onionSkinChanged(bool on);
    void onionSelPosChanged(int position);
    void alignTopLeft();
    void alignTopRight();
    void alignBotLeft();
    void alignBotRight();
    void alignTopCenter();
    void alignBotCenter();
    void alignCenterCenter();
    void alignCenterLeft();
    void alignCenterRight();
    void prevSpr();
    void nextSpr();
    // Shows the sprite at a position of the list.
    void definePos(int position);
    // Shows the current position again after the model changed.
    void updateSel();
    void axisChanged(QPoint axis);
    void cursorChanged(QPoint position);
    // Replaces the current sprite's image, asking about the palette when the image brings another one.
    void setSprite(QImage& image);
    void changeSprite(QImage& image);
    // The palette the palettes panel picked for the view.
    void showPalette(int index);

protected:
    QMap<QString, QString>* projectVariables() const { return variables; }
    // A folder to start a file dialog in: the project's key, else "proj_path".
    QString startFolder(const char* key) const;
    void rememberFolder(const char* key, const QString& file);

private:
    void showSprite(int position);
    void moveAxis(int dx, int dy);
    void align(int which);
    bool replaceImage(QImage image);
    QSprRender* view() const;
    // Asks which sprites a command takes, starting from the last answer; false on cancel.
    bool askRange(const QString& title, SaveItem& item);
    // Saves the sprites of rows as image files: one file at path for the current sprite alone, else a
    // file "group-number.suffix" each in the folder named by path's complete base name. Aligned images
    // share one axis and canvas, which axis receives. Answers how many failed.
    int saveImages(const SaveItem& item, const QList<uint>& rows, const QString& path, bool aligned,
                   QPoint* axis);
    // Where saveImages() puts the files of a range.
    static QString rangeFolder(const QString& path);
    QString askImageSave(const QString& title, const SaveItem& item);
    // The window that the editor's dialogs belong to.
    static QWidget* dialogParent();

    QAnimSpriteWorkspace* workspaceOf;
    QPointer<QSprites> model;
    QMap<QString, QString>* variables = nullptr;
    QSpritesPanel* panelWidget;
    int block = 0;
    bool framed = false;
    int onionPosition = 0;
    bool onionOn = false;
    bool active = false;
    QList<QPair<QString, QSprites*>> importSources;
    AddSpr::Values addValues;
    SaveItem lastRange;
    QPointer<AlignDlg> alignWindow;
};
