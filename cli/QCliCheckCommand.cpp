#include "QCliCheckCommand.h"

#include "QCliProject.h"
#include "QProject.h"

QString QCliCheckCommand::summary() const
{
    return QStringLiteral("open a project as the editor does and print its issue list");
}

QString QCliCheckCommand::usage() const
{
    return QStringLiteral("tavrel-cli check PROJECT.def|FONT.fnt");
}

int QCliCheckCommand::run(QCliContext& context)
{
    if (context.arguments.size() != 1 || context.arguments.at(0).startsWith(QLatin1String("--")))
        return context.usageError(QStringLiteral("check: expected one definitions file"), usage());
    const std::unique_ptr<QProject> project = QCliProject::open(context, context.arguments.at(0), true);
    if (!project) return CliFailed;
    project->check();
    QMessageList* issues = project->messageList();
    issues->refresh();
    for (int row = 0; row < issues->rowCount(); ++row)
        context.out << issues->rowText(row) << '\n';
    // The rows keep the editor's texts; the tally goes apart so that the rows stay easy to compare.
    context.err << issues->count(0) << " error(s), " << issues->count(1) << " warning(s)\n";
    return issues->count(0) > 0 ? CliFailed : CliSuccess;
}
