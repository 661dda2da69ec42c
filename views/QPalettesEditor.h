#pragma once

#include "QInterfaceEditor.h"
#include "QRGBPal.h"
#include "QSprites.h"

#include <QColor>
#include <QMap>
#include <QModelIndex>
#include <QObject>
#include <QPointer>

#include <functional>

class QAnimSpriteWorkspace;
class QPaletteWidget;
class QPalettesPanel;
class QSprRender;
class QSprite;
class QSpritePalette;
class QSpritesEditor;

// The side panel beside the sprites editor that edits the palettes of a sprite file. It owns no data:
// it shows one palette of the current project's QSprites in a palette widget, and every change, from
// one colour to the whole list, goes through the model so that the model's undo stack covers it. The
// widget's own steps are finer: each of them reaches the model as one change of colours.
class QPalettesEditor : public QObject, public QInterfaceExtraEditor
{
    Q_OBJECT

public:
    // Side editors are numbered in the order the window registers them: organizer, palettes, thumbnails.
    static constexpr int Number = 1;

    QPalettesEditor(QSpritesEditor* spritesEditor, QAnimSpriteWorkspace* workspace,
                    QObject* parent = nullptr);
    ~QPalettesEditor() override;

    static QString key() { return QStringLiteral("palettes"); }

    // The model shown and the project's variables ("pal_path", "proj_path"); null for none.
    void bind(QSprites* sprites, QMap<QString, QString>* variables);
    QSprites* sprites() const { return model; }
    QPalettesPanel* controls() const;
    QPaletteWidget* colors() const;
    // The position of the palette shown, -1 for none.
    int position() const { return current; }
    QSpritePalette* currentPalette() const;
    // The sprite the sprites editor shows from this file, or null.
    QSprite* shownSprite() const;
    // Brings the sprites editor onto the page when an operation needs the sprite view and it shows
    // something else; the window sets it, since only the window switches editors.
    void setPageSwitch(std::function<void()> switcher) { pageSwitch = std::move(switcher); }

    // QInterfaceExtraEditor.
    QString title() const override { return QStringLiteral("Palettes"); }
    bool isModified() const override;
    int number() const override { return Number; }
    QWidget* panel() const override;
    void activate() override;
    void deactivate() override;

Q_SIGNALS:
    void enabled(bool on);
    void setMaximum(int count);
    void setSelPos(int position);
    void setPosText(const QString& text);
    void setGroup(int value);
    void setNumber(int value);
    void setColorCount(ushort count);
    void titleChanged();
    // Picking colours from the sprite view went on or off.
    void colorPicking(bool on);

public Q_SLOTS:
    void clear();
    void clearUnused();
    void add();
    void del();
    void delDupl();
    void open();
    void save();
    void switchCount();
    void remap();
    void prevPal();
    void nextPal();
    void undo();
    void redo();
    void switchColor();
    void pickColor(bool on);
    void setColor();
    void setSprPal();
    void setGrpPal();
    // The advanced palette editor arrives with its own feature; its action stays disabled until then.
    void advanced();
    void selPosChanged(int position);
    void prevGrp();
    void grpChanged(int value);
    void nextGrp();
    void numChanged(int value);
    void remapChanged(const QModelIndex& from, const QModelIndex& to);
    // The widget's colours changed: they become the palette's, as one undo step of the model.
    void changed();
    void colorCaptured(uchar index);
    void colorDblClicked(ushort index);
    void colorMoved(ushort from, ushort to);
    // Writes a whole table into the current palette.
    void setPalette(QRGBPal* table);
    // Shows the palette at a position and lets the sprite view use it.
    void showPalette(int position);

private:
    void show(int position, bool toView);
    void showFields();
    void modelChanged();
    void followPalette(int index);
    void followSprite(int position);
    // Switches to the sprites editor if the view shows something else.
    void ensurePage();
    void refreshView();
    bool askColor(const QColor& initial, QColor* chosen);
    void writeColors(const QRGBPal* table);
    QString startFolder() const;
    void rememberFolder(const QString& folder);
    void saveRange(int group, bool all);
    QSprRender* view() const;

    QPointer<QSpritesEditor> spritesEditor;
    QAnimSpriteWorkspace* workspaceOf;
    QPointer<QSprites> model;
    QMap<QString, QString>* variables = nullptr;
    // The window's side panel may hold it when the window goes first.
    QPointer<QPalettesPanel> panelWidget;
    QPointer<QSpritePalette> shown;
    std::function<void()> pageSwitch;
    int current = -1;
    int spritePosition = -1;
    int block = 0;
    bool active = false;
};
