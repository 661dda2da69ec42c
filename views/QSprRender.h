#pragma once

#include "QDecodedImageCache.h"
#include "QRenderer.h"
#include "QSprites.h"
#include "QViewZoom.h"

#include <QColor>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPoint>
#include <QPointer>
#include <QRect>
#include <QTimer>
#include <QVector>

#include <array>

class QAnimation;
class QAnimationFrame;
class QAnimations;
class QCollisionBox;
class QSprite;

// The one view in which a sprite, or a frame of an action, is shown and edited with the mouse. It
// draws in one painter pass: gradient backdrop, background image, onion-skin ghost, guide lines, the
// sprite with its palette and the frame's transparency, collision boxes with grab handles, the three
// crosses and the rulers. Mouse and keys move the sprite's axis or the frame's offset, the extra cross,
// the guide lines and the collision boxes. Every screen rectangle is cached and recomputed only on a
// change; paint only reads the cache.
class QSprRender : public QRenderer
{
    Q_OBJECT

public:
    enum Mode
    {
        SpriteMode = 0,
        AnimationMode = 1
    };
    enum Target
    {
        TargetView = 0,
        TargetSprite,
        TargetAnimCross,
        TargetExtraCross,
        TargetHorizontalGuide,
        TargetVerticalGuide,
        TargetBox,
        TargetHandleTopLeft,
        TargetHandleTopMiddle,
        TargetHandleTopRight,
        TargetHandleRightMiddle,
        TargetHandleLeftMiddle,
        TargetHandleBottomLeft,
        TargetHandleBottomMiddle,
        TargetHandleBottomRight
    };
    enum OnionEffect
    {
        OnionNone = 0,
        OnionMonochrome = 1,
        OnionLighter = 2,
        OnionDarker = 3
    };
    static constexpr int MaxBoxes = 50;

    explicit QSprRender(QObject* parent = nullptr);
    ~QSprRender() override;

    // Models, borrowed.
    void setSprites(QSprites* sprites);
    void setAnimations(QAnimations* animations);
    QSprites* sprites() const { return spriteModel; }
    QAnimations* animations() const { return actionModel; }

    // Content.
    void clear();
    void setRenderMode(int mode); // clears the content too
    int renderMode() const { return mode; }
    void setSprite(int index);  // sprite mode
    void setAction(int index);  // animation mode
    void setFrame(int index);   // of the current action
    void setPalette(int index); // out of range: the sprite's own
    // Shows the current frame with another offset, scale, angle and blend factors until the next
    // setFrame(): the looks that playback interpolates between frames, which never reach the text.
    void setFrameLook(QPoint offset, double scaleX, double scaleY, int angle, int source, int destination);
    void setOnionSprite(int index);
    void reloadSprite();
    // Recomputes every cached rectangle and repaints.
    void refresh();
    // Rebuilds the box table from the current frame.
    void refreshBoxes();
    QSprite* sprite() const { return currentSprite; }
    QAnimationFrame* frame() const { return currentFrame; }

    // Appearance.
    void setBackground(const QColor& start, const QColor& end, int type, QPoint position,
                       const QString& file);
    // type 0 uses the built-in images; another type reads the three files, each falling back to the
    // built-in image when it doesn't load.
    void setCrosshair(int type, const QString& sprite, const QString& animation, const QString& extra);
    void setBoxColors(const QColor& clsn1, const QColor& clsn1Default, const QColor& clsn2,
                      const QColor& clsn2Default, int opacityPercent);
    void setZoomMode(int row);
    void setZoomCentre(int centre);
    void setOnion(bool on, int effect, int opacityPercent);
    void setOrder(bool clsnOverAxis, bool spriteOverGuides);
    void showSpriteCross(bool on);
    void showAnimationCross(bool on);
    void showExtraCross(bool on);
    void showRulers(bool on);
    void showGuides(bool on);
    // In the order Clsn1, Clsn2, Clsn1 default, Clsn2 default (the box type).
    void showBoxes(bool clsn1, bool clsn2, bool clsn1Default, bool clsn2Default);
    void showTransparentColor(bool on);
    void setColorCapture(bool on);
    void setBoxDrawing(bool on, int boxType);
    void setLocked(bool on);
    void setContentsHidden(bool on);

    // Zoom.
    void setZoomIndex(int index);
    void zoomIn();
    void zoomOut();
    void zoomActual();
    double zoomFactor() const { return zoom.factor(); }
    int zoomIndex() const { return zoom.index(); }
    int zoomMode() const { return zoom.row(); }

    // Positions: the main axis in screen pixels, the rest in sprite pixels relative to it.
    QPoint mainAxis() const { return axis; }
    void setMainAxis(QPoint value);
    QPoint extraCross() const { return extraAxis; }
    void setExtraCross(QPoint value);
    // x: the vertical guide line, y: the horizontal one.
    QPoint guides() const { return guide; }
    void setGuides(QPoint value);

    // Boxes of the current frame.
    void copyBoxes();
    void pasteBoxes();
    void deleteBoxes();
    // Toggles bit 1 of the type (default or plain) when defaultBit, else bit 0 (Clsn1 or Clsn2).
    void flipBoxes(bool defaultBit);
    void deselectBoxes();
    void moveBoxes(QPoint delta);
    int boxCount() const { return boxes; }
    bool boxSelected(int index) const;
    // True while the view writes to the models itself; editors ignore the change signals meanwhile.
    bool isUpdating() const { return updating; }

    // The hit test at a widget position, for the cursor and for tests.
    int hitTest(QPoint position);
    QRect spriteRect() const { return spriteScreen; }
    QRect boxRect(int index) const { return index >= 0 && index < boxes ? boxTable[index].screen : QRect(); }
    // The colours the sprite is drawn with (its own palette, or the one picked).
    const QVector<QRgb>& colors() const { return colorTable; }
    // Decoded pixels of the sprites shown lately; kept across sprites so stepping through is quick.
    QDecodedImageCache& decodedImages() { return imageCache; }

    // QRenderer.
    void keyPress(QKeyEvent* event) override;
    void keyRelease(QKeyEvent* event) override;
    void mousePress(QMouseEvent* event) override;
    void mouseRelease(QMouseEvent* event) override;
    void mouseMove(QMouseEvent* event) override;
    void wheel(QWheelEvent* event) override;
    void resize() override;
    void paint(QPainter& painter, QPaintEvent* event) override;

Q_SIGNALS:
    void axisChanged(QPoint axis);
    void extraAxisChanged();
    void clsnModeExit();
    void colorCaptured(uchar index);
    void cursorChanged(QPoint position);

private:
    struct Box
    {
        QCollisionBox* box = nullptr; // null for a box being drawn
        QRect screen;
        QRect saved;
        bool selected = false;
    };

    // Positions and pictures.
    void computeRects();
    void loadSpriteImage(QSprite* sprite, int flip);
    void applyPalette();
    void loadOnion();
    void readNeighbours();
    QPoint viewCentre() const;
    void zoomTo(QPoint newAxis);
    // Painting, in the order of one pass.
    void drawSprite(QPainter& painter);
    void drawSpriteWith(QPainter& painter, const QVector<QRgb>& table, QPainter::CompositionMode mode,
                        double opacity);
    void drawCrosses(QPainter& painter);
    void drawBoxes(QPainter& painter, int k);
    void drawGuides(QPainter& painter, int k);
    void drawRulers(QPainter& painter);
    // Input.
    int guideTest(QPoint position, int k) const;
    int boxTest(QPoint position);
    void setCursorFor(int value);
    void captureColor(QPoint position, bool anywhere);
    // Boxes.
    int typeOf(int index) const;
    void refreshHandles();
    void resizeBoxes(QPoint delta);
    void commitBoxes();
    void commitDrawnBox();
    QRect toModel(const QRect& screen) const;
    QList<QCollisionBox*> selectedBoxes() const;

    // The implementation keeps its helpers in the .cpp files; these are the fields of the view.
    QSprite* currentSprite = nullptr;
    quint16 spriteWidth = 0;
    quint16 spriteHeight = 0;
    QSprite* onionSprite = nullptr;
    QAnimation* currentAction = nullptr;
    QAnimationFrame* currentFrame = nullptr;
    qint32 frameAngle = 0;
    double frameScaleX = 1;
    double frameScaleY = 1;
    qint16 sourceAlpha = 256;
    qint16 destinationAlpha = 256;
    QPoint extraAxis{100, -100};
    // Borrowed; a closed project's model may go while the view waits to read ahead.
    QPointer<QSprites> spriteModel;
    QAnimations* actionModel = nullptr;
    QColor backStart;
    QColor backEnd;
    QLinearGradient backBrush;
    QPoint axis{250, 250};
    QPoint backgroundPos;
    QPoint guide;
    QPoint axisInUse;
    QImage spriteCross;
    QImage animationCross;
    QImage extraCrossImage;
    QImage background;
    QImage onion;
    QImage spriteImage;
    QVector<QRgb> colorTable;
    QPoint savedAxis;
    int zoomCentre = QViewZoom::SpriteAxis;
    QViewZoom zoom;
    int mode = SpriteMode;
    bool locked = false;
    bool hidden = false;
    int onionEffect = OnionMonochrome;
    double onionOpacity = 0.5;
    QColor boxColors[4] = {Qt::red, Qt::blue, Qt::magenta, Qt::darkBlue};
    float boxOpacity = 1.0f;
    bool drawing = false;
    int drawingType = 0;
    quint8 boxes = 0;
    quint8 currentBox = 0;
    bool selection = false;
    bool updating = false;
    std::array<Box, MaxBoxes> boxTable;
    std::array<QPoint, 8> handles;
    QPoint anchor[2];
    bool showSprCross = true;
    bool showAnimCross = true;
    bool showOnion = false;
    bool showTransparent = false;
    bool capture = false;
    bool rulers = true;
    bool showExtra = false;
    bool showGuideLines = false;
    bool showBox[4] = {true, true, true, true};
    bool clsnOverAxis = false;
    bool spriteOverGuides = false;
    QRect spriteScreen;
    QRect spriteCrossScreen;
    QRect animationCrossScreen;
    QRect extraCrossScreen;
    QRect backgroundScreen;
    QRect onionScreen;
    bool pressed = false;
    bool moved = false;
    QPoint last;
    int target = TargetView;
    // The palette picked for the view by its index in the model; -1 for the sprite's own.
    int paletteIndex = -1;
    int onionIndex = -1;
    // The frame's mirroring as the sprite image was loaded with it.
    int loadedFlip = 0;
    // The offset of a look set by setFrameLook(), in place of the frame's own while lookSet is on.
    bool lookSet = false;
    QPoint lookOffset;
    QDecodedImageCache imageCache;
    // Decodes the neighbours of the sprite shown while the event loop idles, so that stepping through
    // the sprites (a held key) finds the next picture ready.
    QTimer readAhead;
    int readAheadFrom = -1;
};
