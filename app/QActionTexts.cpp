#include "QActionTexts.h"

#include <QHash>

#include <iterator>

const QActionTexts::Row* QActionTexts::table(unsigned& count)
{
    // Text ids are row numbers that callers keep, so rows are only ever appended: a new family goes
    // at the end, one line per action.
    static const Row rows[] = {
        // The frame.
        {"file_new", QT_TR_NOOP("&New project"), QT_TR_NOOP("Make a new, empty project")},
        {"file_open", QT_TR_NOOP("&Open project..."), QT_TR_NOOP("Open a project by its definitions file")},
        {"file_close", QT_TR_NOOP("&Close project"), QT_TR_NOOP("Close the current project")},
        {"file_close_all", QT_TR_NOOP("Close a&ll projects"), QT_TR_NOOP("Close every open project")},
        {"file_close_others", QT_TR_NOOP("Close o&ther projects"),
         QT_TR_NOOP("Close every project but the current one")},
        {"file_save", QT_TR_NOOP("&Save project"),
         QT_TR_NOOP("Save every changed file of the current project")},
        {"file_saveas", QT_TR_NOOP("Save project &as..."),
         QT_TR_NOOP("Save the current project under a new name")},
        {"file_backup", QT_TR_NOOP("&Back up project"), QT_TR_NOOP("Copy the current project into a backup")},
        {"file_load_backup", QT_TR_NOOP("&Restore backup..."),
         QT_TR_NOOP("Open a backup of the current project")},
        {"file_check_errors", QT_TR_NOOP("Check for &errors"),
         QT_TR_NOOP("Check every file of the current project and list the issues")},
        {"file_run_mugen", QT_TR_NOOP("R&un in M.U.G.E.N."),
         QT_TR_NOOP("Try the current project in the engine")},
        {"file_exit", QT_TR_NOOP("E&xit"), QT_TR_NOOP("Close Tavrel")},
        {"edit_undo", QT_TR_NOOP("&Undo"), QT_TR_NOOP("Undo the last change")},
        {"edit_redo", QT_TR_NOOP("&Redo"), QT_TR_NOOP("Redo the last undone change")},
        {"edit_cut", QT_TR_NOOP("Cu&t"), QT_TR_NOOP("Move the selection to the clipboard")},
        {"edit_copy", QT_TR_NOOP("&Copy"), QT_TR_NOOP("Copy the selection to the clipboard")},
        {"edit_paste", QT_TR_NOOP("&Paste"), QT_TR_NOOP("Insert the contents of the clipboard")},
        {"edit_find_replace", QT_TR_NOOP("&Find and replace..."),
         QT_TR_NOOP("Find and replace text in the current file")},
        {"edit_find_replace_multi", QT_TR_NOOP("Find and replace in all f&iles..."),
         QT_TR_NOOP("Find and replace text in every file of the project")},
        {"view_left_panel", QT_TR_NOOP("&Left panel"), QT_TR_NOOP("Show or hide the left panel")},
        {"view_right_panel", QT_TR_NOOP("&Right panel"), QT_TR_NOOP("Show or hide the right panel")},
        {"view_organizer", QT_TR_NOOP("&Organizer"), QT_TR_NOOP("Show or hide the organizer")},
        {"view_actions", QT_TR_NOOP("&Action list"),
         QT_TR_NOOP("Show or hide the actions of the current editor")},
        {"view_calculator", QT_TR_NOOP("&Calculator"), QT_TR_NOOP("Show or hide the calculator")},
        {"view_clipboard", QT_TR_NOOP("Clip&board"), QT_TR_NOOP("Show or hide the clipboard")},
        {"view_zoomreset", QT_TR_NOOP("Actual &size"), QT_TR_NOOP("Show the view at its actual size")},
        {"view_zoomout", QT_TR_NOOP("Zoom &out"), QT_TR_NOOP("Make the view smaller")},
        {"view_zoomin", QT_TR_NOOP("Zoom &in"), QT_TR_NOOP("Make the view larger")},
        {"tools_options", QT_TR_NOOP("&Options..."),
         QT_TR_NOOP("Change the settings and the keys of Tavrel")},
        {"tools_export_html", QT_TR_NOOP("Export as &HTML..."), QT_TR_NOOP("Write the project as web pages")},
        {"tools_script_editor", QT_TR_NOOP("&Script editor"), QT_TR_NOOP("Write and run Lua scripts")},
        {"ref_docs", QT_TR_NOOP("M.U.G.E.N. &documentation"),
         QT_TR_NOOP("Read the documentation of the engine")},
        {"help_about", QT_TR_NOOP("&About Tavrel"), QT_TR_NOOP("Show the version and the credits of Tavrel")},
        {"editor_new", QT_TR_NOOP("&New file"), QT_TR_NOOP("Make a new file in the current editor")},
        {"editor_open", QT_TR_NOOP("&Open file..."), QT_TR_NOOP("Open a file in the current editor")},
        {"editor_save", QT_TR_NOOP("&Save file"), QT_TR_NOOP("Save the file of the current editor")},
        {"editor_saveas", QT_TR_NOOP("Save file &as..."),
         QT_TR_NOOP("Save the file of the current editor under a new name")},

        // The text workspace.
        {"view_sctrl_list", QT_TR_NOOP("State &controllers"),
         QT_TR_NOOP("Show or hide the state controller list")},
        {"view_text_bar", QT_TR_NOOP("&Text bar"), QT_TR_NOOP("Show or hide the text tool bar")},
        {"code_snippet_insert", QT_TR_NOOP("&Insert snippet"),
         QT_TR_NOOP("Insert a code snippet at the cursor")},
        {"code_snippet_new", QT_TR_NOOP("&New snippet..."),
         QT_TR_NOOP("Keep the selected text as a snippet")},
        {"code_snippet_edit", QT_TR_NOOP("&Edit snippets..."), QT_TR_NOOP("Change or remove code snippets")},
        {"st_sctrl_new", QT_TR_NOOP("New state &controller..."),
         QT_TR_NOOP("Insert a state controller at the cursor")},
        {"st_sctrl_edit", QT_TR_NOOP("&Edit state controller..."),
         QT_TR_NOOP("Change the state controller at the cursor")},
        {"st_sctrl_delete", QT_TR_NOOP("&Delete state controller"),
         QT_TR_NOOP("Remove the state controller at the cursor")},
        {"txt_goto", QT_TR_NOOP("&Go to line..."), QT_TR_NOOP("Move the cursor to a line")},
        {"txt_prev_error", QT_TR_NOOP("&Previous error"), QT_TR_NOOP("Move to the error above the cursor")},
        {"txt_next_error", QT_TR_NOOP("Ne&xt error"), QT_TR_NOOP("Move to the error below the cursor")},
        {"txt_prev_deprecation", QT_TR_NOOP("Previous &deprecation"),
         QT_TR_NOOP("Move to the deprecated item above the cursor")},
        {"txt_next_deprecation", QT_TR_NOOP("Next depre&cation"),
         QT_TR_NOOP("Move to the deprecated item below the cursor")},
        {"txt_comment", QT_TR_NOOP("Toggle co&mment"), QT_TR_NOOP("Comment or uncomment the selected lines")},

        // Definitions, commands and states.
        {"def_new", QT_TR_NOOP("&New definitions"), QT_TR_NOOP("Start new definitions")},
        {"def_open", QT_TR_NOOP("&Open definitions..."), QT_TR_NOOP("Open a definitions file")},
        {"def_save", QT_TR_NOOP("&Save definitions"), QT_TR_NOOP("Save the definitions")},
        {"def_saveas", QT_TR_NOOP("Save definitions &as..."),
         QT_TR_NOOP("Save the definitions under a new name")},
        {"cmd_new", QT_TR_NOOP("&New commands"), QT_TR_NOOP("Start a new command file")},
        {"cmd_open", QT_TR_NOOP("&Open commands..."), QT_TR_NOOP("Open a command file")},
        {"cmd_save", QT_TR_NOOP("&Save commands"), QT_TR_NOOP("Save the commands")},
        {"cmd_saveas", QT_TR_NOOP("Save commands &as..."), QT_TR_NOOP("Save the commands under a new name")},
        {"st_new", QT_TR_NOOP("&New states"), QT_TR_NOOP("Start a new state file")},
        {"st_open", QT_TR_NOOP("&Open states..."), QT_TR_NOOP("Open a state file")},
        {"st_save", QT_TR_NOOP("&Save states"), QT_TR_NOOP("Save the states")},
        {"st_saveas", QT_TR_NOOP("Save states &as..."), QT_TR_NOOP("Save the states under a new name")},
        {"st_var_list", QT_TR_NOOP("&Variables"), QT_TR_NOOP("List the variables the states use")},
        {"st_var_log", QT_TR_NOOP("Variable &log"), QT_TR_NOOP("Show where each variable is read and set")},
        {"st_palfx", QT_TR_NOOP("&PalFX..."), QT_TR_NOOP("Try the colour effect of a PalFX controller")},
        {"st_offset", QT_TR_NOOP("&Offsets..."), QT_TR_NOOP("Work out position offsets on the sprites")},
        {"st_throw", QT_TR_NOOP("&Throw..."), QT_TR_NOOP("Set up the states of a throw")},

        // The editor of the current project to show.
        {"editor_definitions", QT_TR_NOOP("&Definitions"), QT_TR_NOOP("Show the definitions editor")},
        {"editor_sprites", QT_TR_NOOP("&Sprites"), QT_TR_NOOP("Show the sprites editor")},
        {"editor_animations", QT_TR_NOOP("&Animations"), QT_TR_NOOP("Show the animations editor")},
        {"editor_commands", QT_TR_NOOP("&Commands"), QT_TR_NOOP("Show the commands editor")},
        {"editor_states", QT_TR_NOOP("S&tates"), QT_TR_NOOP("Show the states editor")},
        {"editor_sounds", QT_TR_NOOP("S&ounds"), QT_TR_NOOP("Show the sounds editor")},
    };
    count = unsigned(std::size(rows));
    return rows;
}

const QActionTexts::Row* QActionTexts::row(unsigned id)
{
    unsigned rowCount = 0;
    const Row* rows = table(rowCount);
    return id < rowCount ? &rows[id] : nullptr;
}

unsigned QActionTexts::count()
{
    unsigned rowCount = 0;
    table(rowCount);
    return rowCount;
}

unsigned QActionTexts::id(const QString& name)
{
    static const QHash<QString, unsigned> ids = [] {
        QHash<QString, unsigned> byName;
        unsigned rowCount = 0;
        const Row* rows = table(rowCount);
        for (unsigned i = 0; i < rowCount; ++i)
            byName.insert(QLatin1String(rows[i].name), i);
        return byName;
    }();
    return ids.value(name, Unknown);
}

QString QActionTexts::name(unsigned id)
{
    const Row* entry = row(id);
    return entry ? QLatin1String(entry->name) : QString();
}

QString QActionTexts::text(unsigned id)
{
    const Row* entry = row(id);
    return entry ? tr(entry->text) : QString();
}

QString QActionTexts::toolTip(unsigned id)
{
    const Row* entry = row(id);
    return entry ? tr(entry->toolTip) : QString();
}
