#pragma once

class QHBoxLayout;
class QLabel;
class QSlider;
class QWidget;

// The row each editor's panel starts with: a slider over the items and the "n / count" text beside
// it, named after the editor's commands ("spr_sel" and "spr_pos_text" for the prefix "spr").
struct QPositionRow
{
    QSlider* slider = nullptr;
    QLabel* label = nullptr;
    QHBoxLayout* layout = nullptr;

    static QPositionRow make(QWidget* owner, const char* prefix);
};
