#include "QCliResaveCommand.h"

#include "NameCmmReg.h"
#include "QCommands.h"
#include "QDefinitions.h"
#include "UnknownGrpReg.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>

namespace {

// Both families of sections and keys, then name comments and unknown sections: a header line goes to
// the first recogniser registered that fits it, so the known sections must come first.
void registerParamRecognisers()
{
    registerDefinitionElements();
    registerCommandElements();
    for (const QTextElementReg* reg : QTextElementReg::registered())
        if (dynamic_cast<const UnknownGrpReg*>(reg)) return;
    QTextElementReg::add(new NameCmmReg);
    QTextElementReg::add(new UnknownGrpReg);
}

// Text in a Unicode encoding of two or four bytes holds zero bytes, and announces itself by its mark.
bool isBinary(const QByteArray& bytes)
{
    if (bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF")) return false;
    return bytes.contains('\0');
}

// Loads input into a document and writes it to output as a copy.
bool resave(QSyntaxTextEditor& editor, const QString& input, const QString& output, QString* problem)
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

    if (!editor.fromFile(input, 0)) {
        *problem = QStringLiteral("can't be read");
        return false;
    }
    if (!editor.toFile(output, true)) {
        *problem = QStringLiteral("can't be written");
        return false;
    }
    return true;
}

// Definitions and commands are read into the model that owns their kind, sections and keys bound.
template <typename Model>
bool resaveModel(const QString& input, const QString& output, QString* problem)
{
    registerParamRecognisers();
    Model model;
    return resave(model, input, output, problem);
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
        {QStringLiteral("cns"), &resaveText},
        {QStringLiteral("st"), &resaveText},
        {QStringLiteral("air"), &resaveText},
        {QStringLiteral("cmd"), &resaveModel<QCommands>},
        {QStringLiteral("def"), &resaveModel<QDefinitions>},
    };
    return resavers.value(suffix.toLower(), &resaveText);
}

bool QCliResaveCommand::resaveText(const QString& input, const QString& output, QString* problem)
{
    const bool animations = QFileInfo(input).suffix().compare(QLatin1String("air"), Qt::CaseInsensitive) == 0;
    QSyntaxTextEditor editor(animations ? pftAnimations : pftStates, nullptr, true);
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
