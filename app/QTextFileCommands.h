#pragma once

#include "QProjectTypes.h"

class QProject;
class QSyntaxTextEditor;

// The new, open, save and save as of one text file of a project, as the definitions, commands and
// states editors offer them. Each asks the user what the file needs (to discard changes, a name) and
// leaves the file as it was when the user says no.
namespace QTextFileCommands {
// Empties the file once its changes may go; false when the user keeps them.
bool clear(QSyntaxTextEditor* text);
// Asks for a file of the kind and reads it in place of the text; false when cancelled or unreadable,
// after telling the user which file could not be read.
bool open(QSyntaxTextEditor* text, QProjectFileType kind);
// Reads an already chosen path into the text with the configured code page.
bool load(QSyntaxTextEditor* text, const QString& path);
// The path the user chose for opening a file of the kind, or an empty text.
QString askOpenName(QProjectFileType kind);
// Saves to the file's own path; a file that has none on disk yet is saved as.
bool save(QProject* project, QSyntaxTextEditor* text, QProjectFileType kind, int index);
// Asks for a name through the project and writes the file there; the file takes the new name.
bool saveAs(QProject* project, QSyntaxTextEditor* text, QProjectFileType kind, int index);
} // namespace QTextFileCommands
