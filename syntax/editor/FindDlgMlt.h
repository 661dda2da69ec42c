#pragma once

#include "QQuickFindOption.h"

#include <QDialog>
#include <QMap>

class QCheckBox;
class QLineEdit;

// Find and replace that stays open beside the window. It only asks: with "All files" off the current
// text editor searches its own file, with it on the search goes on through the other text files of
// the project, which whoever listens to the *InFiles signals walks.
class FindDlgMlt : public QDialog
{
    Q_OBJECT
public:
    explicit FindDlgMlt(QWidget* parent = nullptr);

    QLineEdit* findTxt() const { return m_findTxt; }
    QLineEdit* replaceTxt() const { return m_replaceTxt; }
    QCheckBox* allFilesBox() const { return allFiles; }
    QCheckBox* optionBox(QQuickFindOption option) const { return checks.value(option); }
    QQuickFindOptions options() const;
    void setOption(QQuickFindOption option, bool on);
    bool inAllFiles() const;
    void setInAllFiles(bool on);

public Q_SLOTS:
    void doFind();
    void doReplace();
    void doReplaceAll();

Q_SIGNALS:
    void find(const QString& text, const QQuickFindOptions& options);
    void replace(const QString& source, const QString& dest, const QQuickFindOptions& options, bool all);
    void findInFiles(const QString& text, const QQuickFindOptions& options);
    void replaceInFiles(const QString& source, const QString& dest, const QQuickFindOptions& options,
                        bool all);

private:
    void askReplace(bool all);

    QLineEdit* m_findTxt;
    QLineEdit* m_replaceTxt;
    QCheckBox* allFiles;
    QMap<QQuickFindOption, QCheckBox*> checks;
};
