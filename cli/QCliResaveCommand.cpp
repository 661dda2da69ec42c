#include "QCliResaveCommand.h"

#include "QAirDocument.h"
#include "QCliSndCommand.h"
#include "QCommands.h"
#include "QDefinitions.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>

namespace {

// Text in a Unicode encoding of two or four bytes holds zero bytes, and announces itself by its mark.
bool isBinary(const QByteArray& bytes)
{
    if (bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF")) return false;
    return bytes.contains('\0');
}

// Loads input into a text file or a model of one and writes it to output.
template <typename File>
bool resave(File& file, const QString& input, const QString& output, QString* problem)
{
    QFile bytes(input);
    if (!bytes.open(QIODevice::ReadOnly)) {
        *problem = QStringLiteral("can't be read");
        return false;
    }
    if (isBinary(bytes.readAll())) {
        *problem = QStringLiteral("is not a text file");
        return false;
    }
    bytes.close();

    if (!file.fromFile(input, 0)) {
        *problem = QStringLiteral("can't be read");
        return false;
    }
    if (!file.toFile(output)) {
        *problem = QStringLiteral("can't be written");
        return false;
    }
    return true;
}

// Definitions and commands are read into the model that owns their kind, sections and keys bound.
template <typename Model>
bool resaveModel(const QString& input, const QString& output, QString* problem)
{
    Model model;
    return resave(model, input, output, problem);
}

// Animations are read into the model bound to the AIR text, every action, frame and box recognised.
bool resaveAnimations(const QString& input, const QString& output, QString* problem)
{
    QAirDocument document;
    return resave(document.model, input, output, problem);
}

} // namespace

QString QCliResaveCommand::summary() const
{
    return QStringLiteral(
        "read a file (cns, st, air, cmd, def, snd, ...) into its model and write it back unchanged");
}

QString QCliResaveCommand::usage() const
{
    return QStringLiteral("tavrel-cli resave FILE OUT");
}

QCliResaveCommand::Resaver QCliResaveCommand::resaverFor(const QString& suffix)
{
    // Each kind of file with a model of its own gets its resaver here.
    static const QHash<QString, Resaver> resavers{
        {QStringLiteral("cns"), &resaveText},
        {QStringLiteral("st"), &resaveText},
        {QStringLiteral("air"), &resaveAnimations},
        {QStringLiteral("cmd"), &resaveModel<QCommands>},
        {QStringLiteral("def"), &resaveModel<QDefinitions>},
        {QStringLiteral("snd"), &QCliSndCommand::resave},
    };
    return resavers.value(suffix.toLower(), &resaveText);
}

bool QCliResaveCommand::resaveText(const QString& input, const QString& output, QString* problem)
{
    QSyntaxTextEditor editor(pftStates, nullptr, true);
    return resave(editor, input, output, problem);
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
