#pragma once

#include "QDefinitionFiles.h"
#include "QProjectTypes.h"
#include "QSyntaxTextEditor.h"

#include <QPoint>
#include <QTimer>

class QProjectContext;

// The definitions file (DEF) by which a project is opened. From its sections it tells what kind of
// project this is, its name, target M.U.G.E.N. version and coordinate space, and which other files
// belong to it.
class QDefinitions : public QSyntaxTextEditor
{
    Q_OBJECT
public:
    // 1.1, the version of a file that names none.
    static constexpr quint32 defaultVersion = 0x1010000;

    explicit QDefinitions(QObject* parent = nullptr);
    ~QDefinitions() override;

    QProjectType type() const { return projectKind; }
    // The quoted "name" of the [Info] section; empty when there is none or it is not quoted.
    QString name() const { return projectName; }
    // The name, or the file's base name when the definitions give none.
    QString displayName() const;
    // The "mugenversion" of [Info] as major << 24 | minor << 16; 0 for a form that is no version,
    // defaultVersion without the entry.
    quint32 version() const { return targetVersion; }
    // The "localcoord" of [Info] when it holds two numbers, else 320, 240.
    QPoint localCoord() const { return coordinates; }
    // The folder of the loaded file; empty after clear().
    QString baseDirectory() const { return base; }

    QDefinitionFiles files() const;
    // The bytes of a name of files() as the file has them: names are bytes in their author's code page,
    // which the text's codec may not read alike. Empty for a name the definitions don't give.
    QByteArray fileNameBytes(const QString& name) const;

    // Whether a section of that name exists, ignoring case.
    bool sectionExists(const QString& section) const;
    // The value text of a key in the first section of that name, without a trailing comment.
    QString findValue(const QString& section, const QString& key) const;

    // Reads the file and takes its folder as the base directory.
    bool fromFile(const QString& path, uint codepage, bool copy = false) override;
    // Unless copy, the folder of the new file becomes the base directory.
    bool toFile(const QString& path, bool copy = false) override;
    void clear() override;

    // Restarted by every change of the version; when it fires, the project hands the new version on to
    // its syntax checkers, so that typing a version doesn't re-check all files on each key.
    QTimer versionTimer;

Q_SIGNALS:
    void typeChanged(QProjectContext* project);
    void versionChanged(QProjectContext* project);
    void nameChanged(QProjectContext* project, const QString& name);

protected:
    void emitUpdate(QList<QTextElementChange>& changes) override;
    QString discardQuestion() const override;

private:
    void refreshType();
    void refreshInfo();

    QProjectType projectKind = Character;
    QString projectName;
    quint32 targetVersion = defaultVersion;
    QPoint coordinates{320, 240};
    QString base;
};

// Registers the recognisers of sections and keys of definitions files, in their fixed order. Once per
// process; a second call does nothing.
void registerDefinitionElements();
