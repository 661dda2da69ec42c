#pragma once

#include <QDialog>
#include <QMap>

class QActionManager;
class QCheckBox;
class QComboBox;
class QFontComboBox;
class QSpinBox;
class QTabWidget;
class QTableView;

// The options of the program. "Keys" edits the shortcuts of the action manager at once, since each
// key goes through the manager's conflict check; the other pages edit the configuration, which OK and
// Apply write and announce with applied().
class OptionsDlg : public QDialog
{
    Q_OBJECT
public:
    explicit OptionsDlg(QActionManager* actions, QWidget* parent = nullptr);

    QTabWidget* pages() const { return m_pages; }
    QTableView* keysTable() const { return keysView; }
    // The check box of a boolean setting on the pages, by its key.
    QCheckBox* check(const QString& key) const { return checks.value(key); }
    QFontComboBox* fontName() const { return m_fontName; }
    QSpinBox* fontSize() const { return m_fontSize; }
    QComboBox* codePage() const { return m_codePage; }

    // Fills the pages from the configuration.
    void load();
    // Writes the pages into the configuration.
    void store();

public Q_SLOTS:
    void apply();
    void accept() override;
    // Unbinds the keys of the selected action.
    void clearKey();

Q_SIGNALS:
    void applied();

private:
    QWidget* makeKeysPage();
    QWidget* makeCodePage();
    QCheckBox* addCheck(const QString& key, const QString& text, QWidget* parent);

    QActionManager* actions;
    QTabWidget* m_pages;
    QTableView* keysView = nullptr;
    QMap<QString, QCheckBox*> checks;
    QFontComboBox* m_fontName = nullptr;
    QSpinBox* m_fontSize = nullptr;
    QComboBox* m_codePage = nullptr;
};
