#pragma once

#include <QString>

class QSprites;

// One undo step for an operation made of many changes. The macro opens at the first real change, so an
// operation that ends up changing nothing leaves no empty step behind. Meanwhile the model runs as
// loading, so that validation and changed() come once, when the group closes, and not per change.
class QSpriteChangeGroup
{
public:
    QSpriteChangeGroup(QSprites* model, const QString& text);
    ~QSpriteChangeGroup();

    QSpriteChangeGroup(const QSpriteChangeGroup&) = delete;
    QSpriteChangeGroup& operator=(const QSpriteChangeGroup&) = delete;

    // Call before each change; only the first call opens the macro.
    void open();
    bool isOpen() const { return opened; }

private:
    QSprites* model;
    QString text;
    bool recording;
    bool wasLoading;
    bool opened = false;
};
