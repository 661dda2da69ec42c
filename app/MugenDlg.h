#pragma once

#include "QMugenEntry.h"

#include <QDialog>

class QComboBox;
class QLineEdit;

// One game to test in: its name, executable, icon and command line, with the usual command lines
// offered as presets.
class MugenDlg : public QDialog
{
    Q_OBJECT
public:
    explicit MugenDlg(const QMugenEntry& entry = QMugenEntry(), QWidget* parent = nullptr);

    QMugenEntry entry() const;
    QComboBox* presets() const { return presetBox; }

    // The presets by row: the text shown and the command line it stands for; the last is "Custom".
    static QList<QPair<const char*, const char*>> presetTable();

private:
    void browseExe();
    void browseIcon();
    void presetChosen(int row);

    QLineEdit* name;
    QLineEdit* exe;
    QLineEdit* icon;
    QLineEdit* params;
    QComboBox* presetBox;
};
