#include "QProjectSearch.h"

#include "QCommands.h"
#include "QDefinitions.h"
#include "QProject.h"
#include "QSyntaxTextEditor.h"
#include "QTextSearch.h"

QList<QProjectSearch::File> QProjectSearch::files(const QProject* project)
{
    QList<File> list;
    if (!project) return list;
    if (project->definitions()) list.append({project->definitions(), pftDefinitions, 0});
    if (project->commands()) list.append({project->commands(), pftCommands, 0});
    for (int index = 0; index < project->statesCount(); ++index)
        if (QSyntaxTextEditor* states = project->states(index)) list.append({states, pftStates, index});
    return list;
}

QProjectSearch::Hit QProjectSearch::find(const QProject* project, const QSyntaxTextEditor* shown,
                                         const QTextCursor& from, const QString& text,
                                         const QQuickFindOptions& options)
{
    const QList<File> list = files(project);
    const int count = int(list.size());
    if (count == 0 || text.isEmpty()) return {};
    int current = -1;
    for (int index = 0; index < count; ++index)
        if (list.at(index).text == shown) current = index;

    const bool backward = options.value(QQuickFindOption::Backward);
    const bool circular = options.value(QQuickFindOption::Circular);
    if (current >= 0) {
        const QTextCursor hit = QTextSearch::find(shown->document, text, options,
                                                  from.isNull() ? QTextCursor(shown->document) : from);
        if (!hit.isNull()) return {list.at(current), hit};
    }
    // Without a shown file the walk starts just outside the list, so that its first step is the edge.
    const int start = current >= 0 ? current : (backward ? count : -1);
    for (int step = 1; step <= count; ++step) {
        int index = start + (backward ? -step : step);
        if (index < 0 || index >= count) {
            if (!circular) break;
            index = (index % count + count) % count;
        }
        const File& file = list.at(index);
        const QTextCursor hit = QTextSearch::findFromEdge(file.text->document, text, options);
        if (!hit.isNull()) return {file, hit};
    }
    return {};
}

int QProjectSearch::replaceAll(const QProject* project, const QString& source, const QString& dest,
                               const QQuickFindOptions& options, int* changedFiles)
{
    int replaced = 0;
    int changed = 0;
    for (const File& file : files(project)) {
        if (file.text->isReadOnly()) continue;
        const int count = QTextSearch::replaceAll(file.text->document, source, dest, options);
        replaced += count;
        if (count > 0) ++changed;
    }
    if (changedFiles) *changedFiles = changed;
    return replaced;
}
