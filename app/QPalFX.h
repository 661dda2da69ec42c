#pragma once

#include <QImage>
#include <QList>
#include <QString>

#include <array>

// The values of a PalFX controller and the effect of them on colours, computed as the engine does it:
// the colour level first (0 grey, 256 unchanged), then inversion, then the addition with its sine wave
// and the multiplication (256 unchanged), clamped to a byte.
//
// A preset is a small text file "<name>.palfx" of "key = values" lines with the controller's own keys
// (add, mul, sinadd, invertall, color); missing keys keep their neutral values.
class QPalFX
{
public:
    std::array<int, 3> add{0, 0, 0};
    std::array<int, 3> mul{256, 256, 256};
    // Amplitudes of red, green and blue, then the period in ticks.
    std::array<int, 4> sinadd{0, 0, 0, 0};
    int invertall = 0;
    int color = 256;

    // The controller as inserted into a state file, every value right-aligned in a column.
    QString code() const;
    QRgb apply(QRgb colour, int tick) const;
    // An indexed image has its colour table changed, any other its pixels; alpha stays.
    QImage apply(const QImage& image, int tick) const;

    // Reads the keys it knows from the text of a preset; false when it knows none.
    bool read(const QString& text);
    struct Preset;
    // The presets of a folder by file name, sorted; none when the folder doesn't exist.
    static QList<Preset> presets(const QString& folder);

    bool operator==(const QPalFX& other) const;
};

struct QPalFX::Preset
{
    QString name;
    QPalFX values;
};
