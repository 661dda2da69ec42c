#pragma once

#include <QDialog>
#include <QPointer>

class QComboBox;
class QSyntaxTextEditor;

// The choice of a text file's encoding from the encoding table. The choice is what the next save
// writes; a file that is on disk may also be read again in it, for when the guess at opening was wrong.
class EncDlg : public QDialog
{
    Q_OBJECT
public:
    // Preselects codec, an index into the encoding table.
    explicit EncDlg(int codec, QWidget* parent = nullptr);

    QComboBox* codePage() const { return m_codePage; }
    int codec() const;
    void setCodec(int codec);

    // Opens the dialog for a text without waiting for it; on OK the choice is applied to the text. The
    // dialog deletes itself when closed.
    static EncDlg* openFor(QSyntaxTextEditor* text, QWidget* parent);
    // Makes codec the text's encoding. When the file exists, the user is asked whether to read it again
    // in that codec; the text keeps its title and path either way. Answers whether it was read again.
    static bool apply(QSyntaxTextEditor* text, int codec);

private:
    QComboBox* m_codePage;
};
