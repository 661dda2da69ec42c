#include "QCliResaveCommand.h"

#include "QSyntaxTextEditor.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>

namespace {

QProjectFileType fileTypeOf(const QString& suffix)
{
    if (suffix == QLatin1String("air")) return pftAnimations;
    if (suffix == QLatin1String("cmd")) return pftCommands;
    if (suffix == QLatin1String("def")) return pftDefinitions;
    return pftStates;
}

// Text in a Unicode encoding of two or four bytes holds zero bytes, and announces itself by its mark.
bool isBinary(const QByteArray& bytes)
{
    if (bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF")) return false;
    return bytes.contains('\0');
}

} // namespace

QString QCliResaveCommand::summary() const
{
    return QStringLiteral("read a text file (cns, st, air, cmd, def, ...) and write it back unchanged");
}

QString QCliResaveCommand::usage() const
{
    return QStringLiteral("tavrel-cli resave FILE OUT");
}

QCliResaveCommand::Resaver QCliResaveCommand::resaverFor(const QString& suffix)
{
    // Each kind of file with a model of its own gets its resaver here.
    static const QHash<QString, Resaver> resavers{
        {QStringLiteral("cns"), &resaveText}, {QStringLiteral("st"), &resaveText},
        {QStringLiteral("air"), &resaveText}, {QStringLiteral("cmd"), &resaveText},
        {QStringLiteral("def"), &resaveText},
    };
    return resavers.value(suffix.toLower(), &resaveText);
}

bool QCliResaveCommand::resaveText(const QString& input, const QString& output, QString* problem)
{
    QFile file(input);
    if (!file.open(QIODevice::ReadOnly)) {
        *problem = QStringLiteral("can't be read");
        return false;
    }
    if (isBinary(file.readAll())) {
        *problem = QStringLiteral("is not a text file");
        return false;
    }
    file.close();

    QSyntaxTextEditor editor(fileTypeOf(QFileInfo(input).suffix().toLower()), nullptr, true);
    if (!editor.load(input)) {
        *problem = QStringLiteral("can't be read");
        return false;
    }
    if (!editor.save(output, false, true)) {
        *problem = QStringLiteral("can't be written");
        return false;
    }
    return true;
}

int QCliResaveCommand::run(QCliContext& context)
{
    if (context.arguments.size() != 2)
        return context.usageError(QStringLiteral("resave: expected an input and an output file"), usage());
    const QString input = context.arguments.at(0);
    const QString output = context.arguments.at(1);
    if (!QFileInfo(input).isFile()) return context.fail(input, QStringLiteral("no such file"));

    QString problem;
    if (!resaverFor(QFileInfo(input).suffix())(input, output, &problem))
        return context.fail(problem == QLatin1String("can't be written") ? output : input, problem);
    context.out << "wrote " << output << Qt::endl;
    return CliSuccess;
}
