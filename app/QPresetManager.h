#pragma once

#include <QHash>
#include <QList>
#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>

// One element of a preset's layout tree: an "editor" or "extra" element with its "panel" and
// "toolbar" children, or one of the controls placed in them. Attributes are kept as written; the
// frame reads them with their own patterns and scales numbers through QPresetManager::scaled.
struct QPresetElement
{
    QString tag;
    QMap<QString, QString> attributes;
    QList<QPresetElement> children;

    QString attribute(const QString& name, const QString& fallback = QString()) const
    {
        return attributes.value(name, fallback);
    }
    // The first child with this tag (and this "name" attribute when given), or null.
    const QPresetElement* child(const QString& tag, const QString& name = QString()) const;
};

// Everything a preset file says, unscaled.
struct QPresetData
{
    QString stylesheet;
    QString iconset;
    QString colorset;
    // The raw attribute text; applied only when it matches the metric pattern.
    QString panelMetric;
    QString extraMetric;
    // The "editor" and "extra" elements in file order.
    QList<QPresetElement> editors;
};

// The layout presets of "/presets": one "<name>.xml" each, listed by stem. Applying a preset makes
// its metrics current and passes its iconset, stylesheet and colorset on to the other managers.
class QPresetManager : public QObject
{
    Q_OBJECT
public:
    explicit QPresetManager(const QString& appDir, QObject* parent = nullptr);

    QStringList names() const;
    QString current() const { return currentName; }
    bool contains(const QString& name) const { return presets.contains(name); }
    const QPresetData* preset(const QString& name) const;

    // Applies the preset, then the iconset, the stylesheet and the colorset in this order through the
    // global managers; an empty argument stands for the value the preset names. Returns false when the
    // preset is unknown (nothing changes then) or when one of the others could not be applied.
    bool apply(const QString& preset, const QString& iconset = QString(),
               const QString& stylesheet = QString(), const QString& colorset = QString());

    // The three numbers of the left (editor) and right (extra) side panels, scaled to the screen.
    QList<int> panelMetric() const { return scaledTriple(panelValues); }
    QList<int> extraMetric() const { return scaledTriple(extraValues); }

    // The layout trees of the current preset, null when the preset has none for that name.
    const QPresetElement* editor(const QString& name) const;
    const QPresetElement* extra(const QString& name) const;

    // A preset is laid out at 96 dots per inch; every number is scaled with integer arithmetic.
    int dpi() const { return screenDpi; }
    void setDpi(int dpi) { screenDpi = dpi > 0 ? dpi : 96; }
    int scaled(int value) const { return value * screenDpi / 96; }
    // The logical dots per inch of the primary screen, 96 when there is no screen.
    static int systemDpi();

    // Reads "220,0,30"-like text; false (and triple untouched) when it doesn't match the pattern.
    static bool parseMetric(const QString& text, QList<int>& triple);

signals:
    void presetChanged();

private:
    bool load(const QString& path, QPresetData& data) const;
    QList<int> scaledTriple(const QList<int>& triple) const;

    QString folder;
    QHash<QString, QPresetData> presets;
    QString currentName;
    QList<int> panelValues;
    QList<int> extraValues;
    int screenDpi;
};

extern QPresetManager* presetManager;
