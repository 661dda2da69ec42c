#include "QCliLintCommand.h"

#include "QModelTables.h"
#include "QMugenParamInfo.h"
#include "QMugenSyntaxProcessor.h"
#include "QMugenSyntaxProperties.h"
#include "QSyntaxLibrary.h"
#include "QTextEncoding.h"

#include <QCoreApplication>
#include <QFile>
#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>

namespace {

const char* kindName(int kind)
{
    switch (kind) {
    case SyntaxError:
        return "error";
    case SyntaxWarning:
        return "warning";
    default:
        return "notice";
    }
}

} // namespace

QString QCliLintCommand::summary() const
{
    return QStringLiteral("check M.U.G.E.N. text files (cns, st, cmd, air, def) and list their findings");
}

QString QCliLintCommand::usage() const
{
    return QStringLiteral("tavrel-cli lint FILE... [--version 1.0|1.1]");
}

int QCliLintCommand::run(QCliContext& context)
{
    QString versionText = QStringLiteral("1.1");
    bool present = false;
    if (!context.takeOption(QStringLiteral("--version"), &versionText, &present))
        return context.usageError(QStringLiteral("lint: --version needs a value"), usage());
    const quint32 version = QMugenParamInfo::parseVersion(versionText);
    if (version == 0)
        return context.usageError(QStringLiteral("lint: '%1' is no M.U.G.E.N. version").arg(versionText),
                                  usage());
    for (const QString& argument : std::as_const(context.arguments))
        if (argument.startsWith(QLatin1String("--")))
            return context.usageError(QStringLiteral("lint: unknown option '%1'").arg(argument), usage());
    if (context.arguments.isEmpty())
        return context.usageError(QStringLiteral("lint: no file given"), usage());

    if (!QModelTables::checkers())
        return context.fail(QModelTables::dataDir(), QStringLiteral("the vocabularies can't be read"));

    bool failed = false;
    bool errors = false;
    for (const QString& path : std::as_const(context.arguments)) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            context.fail(path, QStringLiteral("can't be read"));
            failed = true;
            continue;
        }
        QTextDocument document;
        document.setPlainText(QTextEncoding::decode(file.readAll(), 0));
        QMugenSyntaxProcessor processor(&document, mugenSyntaxProperties(), true);
        processor.setMugenVersion(version);
        for (QTextBlock block = document.firstBlock(); block.isValid(); block = block.next()) {
            const auto* data = static_cast<const QTextEditorBlockData*>(block.userData());
            if (!data) continue;
            QList<QSyntaxMessage> messages = data->messages;
            std::stable_sort(
                messages.begin(), messages.end(),
                [](const QSyntaxMessage& a, const QSyntaxMessage& b) { return a.start < b.start; });
            for (const QSyntaxMessage& message : std::as_const(messages)) {
                errors = errors || message.kind == SyntaxError;
                context.out << path << ':' << block.blockNumber() + 1 << ':' << message.start + 1 << ": "
                            << kindName(message.kind) << ": " << message.text << '\n';
            }
        }
    }
    context.out.flush();
    return failed || errors ? CliFailed : CliSuccess;
}
