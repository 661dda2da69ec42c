#include "QWidgetDialogs.h"

#include "QTrace.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>

// The seam's buttons carry QMessageBox's values so that they pass through unchanged.
static_assert(unsigned(QUserDialogs::Yes) == unsigned(QMessageBox::Yes) &&
                  unsigned(QUserDialogs::No) == unsigned(QMessageBox::No) &&
                  unsigned(QUserDialogs::Cancel) == unsigned(QMessageBox::Cancel) &&
                  unsigned(QUserDialogs::Ok) == unsigned(QMessageBox::Ok) &&
                  unsigned(QUserDialogs::Save) == unsigned(QMessageBox::Save) &&
                  unsigned(QUserDialogs::Apply) == unsigned(QMessageBox::Apply) &&
                  unsigned(QUserDialogs::Discard) == unsigned(QMessageBox::Discard),
              "the seam's buttons map one to one onto QMessageBox's");

namespace {
QWidget* owner()
{
    return QApplication::activeWindow();
}

QMessageBox::Icon boxIcon(QUserDialogs::Icon icon)
{
    switch (icon) {
    case QUserDialogs::Information:
        return QMessageBox::Information;
    case QUserDialogs::Warning:
        return QMessageBox::Warning;
    case QUserDialogs::Critical:
        return QMessageBox::Critical;
    case QUserDialogs::Question:
        return QMessageBox::Question;
    case QUserDialogs::NoIcon:
        break;
    }
    return QMessageBox::NoIcon;
}
} // namespace

QUserDialogs::Button QWidgetDialogs::message(Icon icon, const QString& title, const QString& text,
                                             Buttons buttons, Button defaultButton)
{
    // Told to the trace too, so that a test driving the real program sees why it waits.
    QTrace::write(QStringLiteral("box"), title + QStringLiteral(": ") + text);
    QMessageBox box(boxIcon(icon), title, text, QMessageBox::StandardButtons(int(buttons)), owner());
    box.setDefaultButton(QMessageBox::StandardButton(defaultButton));
    if (box.exec() == -1) return Cancel;
    return Button(box.standardButton(box.clickedButton()));
}

QString QWidgetDialogs::openFileName(const QString& caption, const QString& dir, const QString& filter,
                                     QString* selectedFilter)
{
    return QFileDialog::getOpenFileName(owner(), caption, dir, filter, selectedFilter);
}

QStringList QWidgetDialogs::openFileNames(const QString& caption, const QString& dir, const QString& filter,
                                          QString* selectedFilter)
{
    return QFileDialog::getOpenFileNames(owner(), caption, dir, filter, selectedFilter);
}

QString QWidgetDialogs::saveFileName(const QString& caption, const QString& dir, const QString& filter,
                                     QString* selectedFilter)
{
    return QFileDialog::getSaveFileName(owner(), caption, dir, filter, selectedFilter);
}

QString QWidgetDialogs::existingDirectory(const QString& caption, const QString& dir)
{
    return QFileDialog::getExistingDirectory(owner(), caption, dir);
}

QString QWidgetDialogs::item(const QString& title, const QString& label, const QStringList& items,
                             int current)
{
    bool ok = false;
    const QString chosen = QInputDialog::getItem(owner(), title, label, items, current, false, &ok);
    return ok ? chosen : QString();
}
