#pragma once

#include "QSnippet.h"

#include <QDialog>

#include <memory>
#include <vector>

class QSnipField;

// Asks for the fields of a snippet: a label and an input per field, in the column the field names,
// top to bottom in the fields' order.
class SnipInsertDlg : public QDialog
{
    Q_OBJECT
public:
    SnipInsertDlg(const QString& name, const QList<QSnippetField>& fields, QWidget* parent = nullptr);
    ~SnipInsertDlg() override;

    int fieldCount() const { return int(fields.size()); }
    QWidget* fieldWidget(int index) const;
    // Placeholder names with the values entered, in the fields' order.
    QList<QPair<QString, QString>> values() const;

private:
    std::vector<std::unique_ptr<QSnipField>> fields;
};
