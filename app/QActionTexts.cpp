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

        // The sprite view.
        {"view_center_axis", QT_TR_NOOP("&Center axis"),
         QT_TR_NOOP("Put the main axis in the middle of the view")},
        {"view_spr_cross", QT_TR_NOOP("&Sprite cross"),
         QT_TR_NOOP("Show or hide the cross at the sprite's axis")},
        {"view_anim_cross", QT_TR_NOOP("A&nimation cross"),
         QT_TR_NOOP("Show or hide the cross at the frame's offset")},
        {"view_extra_cross", QT_TR_NOOP("E&xtra cross"),
         QT_TR_NOOP("Show or hide a cross to measure against")},
        {"view_rulers", QT_TR_NOOP("&Rulers"), QT_TR_NOOP("Show or hide the rulers")},
        {"view_guide_lines", QT_TR_NOOP("&Guide lines"), QT_TR_NOOP("Show or hide the guide lines")},
        {"view_attack_clsn", QT_TR_NOOP("&Attack boxes"),
         QT_TR_NOOP("Show or hide the attack boxes (Clsn1)")},
        {"view_collision_clsn", QT_TR_NOOP("Co&llision boxes"),
         QT_TR_NOOP("Show or hide the collision boxes (Clsn2)")},
        {"view_default_clsn1", QT_TR_NOOP("Default a&ttack boxes"),
         QT_TR_NOOP("Show or hide the default attack boxes")},
        {"view_default_clsn2", QT_TR_NOOP("Default c&ollision boxes"),
         QT_TR_NOOP("Show or hide the default collision boxes")},

        // The sprites editor.
        {"spr_new", QT_TR_NOOP("&New sprites"), QT_TR_NOOP("Start an empty sprite file")},
        {"spr_open", QT_TR_NOOP("&Open sprites..."), QT_TR_NOOP("Open another sprite file")},
        {"spr_save", QT_TR_NOOP("&Save sprites"), QT_TR_NOOP("Save the sprite file")},
        {"spr_saveas", QT_TR_NOOP("Save sprites &as..."),
         QT_TR_NOOP("Save the sprite file under a new name")},
        {"spr_add", QT_TR_NOOP("&Add sprites..."), QT_TR_NOOP("Add sprites from image files")},
        {"spr_delete", QT_TR_NOOP("&Delete sprite"), QT_TR_NOOP("Delete the current sprite")},
        {"spr_openimg", QT_TR_NOOP("&Replace image..."),
         QT_TR_NOOP("Replace the current sprite's image by an image file")},
        {"spr_saveimg", QT_TR_NOOP("Save &images..."), QT_TR_NOOP("Save sprites as image files")},
        {"spr_saveimg_aligned", QT_TR_NOOP("Save a&ligned images..."),
         QT_TR_NOOP("Save sprites as image files of one size with one axis")},
        {"spr_crop", QT_TR_NOOP("&Crop..."), QT_TR_NOOP("Cut sprites to their content")},
        {"spr_duplicate", QT_TR_NOOP("D&uplicate"), QT_TR_NOOP("Copy the current sprite after it")},
        {"spr_delete_grp", QT_TR_NOOP("Delete &group..."), QT_TR_NOOP("Delete the sprites of a group")},
        {"spr_rename_grp", QT_TR_NOOP("Re&number group..."),
         QT_TR_NOOP("Move the sprites of a group to another group")},
        {"spr_align", QT_TR_NOOP("Ali&gn tools"),
         QT_TR_NOOP("Show the tools that align the sprite to the guide lines")},
        {"spr_edit_img", QT_TR_NOOP("&Edit image..."),
         QT_TR_NOOP("Edit the current sprite in the image editor")},
        {"spr_split_channels", QT_TR_NOOP("S&plit channels"),
         QT_TR_NOOP("Split a true-colour sprite into red, green and blue sprites")},
        {"spr_export", QT_TR_NOOP("E&xport..."), QT_TR_NOOP("Export sprites and palettes as files")},
        {"spr_import", QT_TR_NOOP("&Import..."),
         QT_TR_NOOP("Import sprites and palettes from an export file")},
        {"spr_import_proj", QT_TR_NOOP("Import from &project..."),
         QT_TR_NOOP("Import sprites from another open project")},
        {"spr_frame_spr", QT_TR_NOOP("&Follow the animation"),
         QT_TR_NOOP("Show the sprite of the animations editor's current frame")},
        {"spr_prev_grp", QT_TR_NOOP("Previous group"), QT_TR_NOOP("Go to the previous group")},
        {"spr_next_grp", QT_TR_NOOP("Next group"), QT_TR_NOOP("Go to the next group")},
        {"spr_pos_left", QT_TR_NOOP("Move left"), QT_TR_NOOP("Move the sprite one pixel left")},
        {"spr_pos_up", QT_TR_NOOP("Move up"), QT_TR_NOOP("Move the sprite one pixel up")},
        {"spr_pos_right", QT_TR_NOOP("Move right"), QT_TR_NOOP("Move the sprite one pixel right")},
        {"spr_pos_down", QT_TR_NOOP("Move down"), QT_TR_NOOP("Move the sprite one pixel down")},
        {"spr_align_topleft", QT_TR_NOOP("Align top left"),
         QT_TR_NOOP("Put the sprite's top left corner on the guide lines")},
        {"spr_align_topright", QT_TR_NOOP("Align top right"),
         QT_TR_NOOP("Put the sprite's top right corner on the guide lines")},
        {"spr_align_bottomleft", QT_TR_NOOP("Align bottom left"),
         QT_TR_NOOP("Put the sprite's bottom left corner on the guide lines")},
        {"spr_align_bottomright", QT_TR_NOOP("Align bottom right"),
         QT_TR_NOOP("Put the sprite's bottom right corner on the guide lines")},
        {"spr_align_topcenter", QT_TR_NOOP("Align top centre"),
         QT_TR_NOOP("Put the middle of the sprite's top on the guide lines")},
        {"spr_align_bottomcenter", QT_TR_NOOP("Align bottom centre"),
         QT_TR_NOOP("Put the middle of the sprite's bottom on the guide lines")},
        {"spr_align_centercenter", QT_TR_NOOP("Align centre"),
         QT_TR_NOOP("Put the sprite's middle on the guide lines")},
        {"spr_align_centerleft", QT_TR_NOOP("Align centre left"),
         QT_TR_NOOP("Put the middle of the sprite's left side on the guide lines")},
        {"spr_align_centerright", QT_TR_NOOP("Align centre right"),
         QT_TR_NOOP("Put the middle of the sprite's right side on the guide lines")},
        {"spr_prev", QT_TR_NOOP("&Previous sprite"), QT_TR_NOOP("Go to the previous sprite")},
        {"spr_next", QT_TR_NOOP("Ne&xt sprite"), QT_TR_NOOP("Go to the next sprite")},

        // The palettes panel.
        {"pal_clear", QT_TR_NOOP("&Delete all palettes"), QT_TR_NOOP("Delete every palette")},
        {"pal_clear_unused", QT_TR_NOOP("Delete &unused palettes"),
         QT_TR_NOOP("Delete the palettes no sprite uses")},
        {"pal_add", QT_TR_NOOP("&Add palette..."), QT_TR_NOOP("Add a palette, empty or from files")},
        {"pal_delete", QT_TR_NOOP("De&lete palette"), QT_TR_NOOP("Delete the current palette")},
        {"pal_delete_duplicates", QT_TR_NOOP("Delete d&uplicates"),
         QT_TR_NOOP("Delete palettes that repeat another's colours")},
        {"pal_open", QT_TR_NOOP("&Open palette..."),
         QT_TR_NOOP("Replace the current palette's colours from a file")},
        {"pal_save", QT_TR_NOOP("&Save palettes..."), QT_TR_NOOP("Save palettes as files")},
        {"pal_switch_count", QT_TR_NOOP("32/256 &colours"),
         QT_TR_NOOP("Switch the palette between 32 and 256 colours")},
        {"pal_remap", QT_TR_NOOP("&Remap..."), QT_TR_NOOP("Remap the colours of the sprites")},
        {"pal_undo", QT_TR_NOOP("Undo colour change"),
         QT_TR_NOOP("Undo the last change of the palette's colours")},
        {"pal_redo", QT_TR_NOOP("Redo colour change"),
         QT_TR_NOOP("Redo the last undone change of the palette's colours")},
        {"pal_switch_color", QT_TR_NOOP("Reverse colours"),
         QT_TR_NOOP("Reverse the order of the selected colours")},
        {"pal_pick_color", QT_TR_NOOP("&Pick colour"), QT_TR_NOOP("Pick a colour from the sprite")},
        {"pal_set_color", QT_TR_NOOP("Set &colour..."), QT_TR_NOOP("Change the selected colour")},
        {"pal_apply_sprite", QT_TR_NOOP("Apply to s&prite"),
         QT_TR_NOOP("Give the palette to the current sprite")},
        {"pal_apply_group", QT_TR_NOOP("Apply to &group"),
         QT_TR_NOOP("Give the palette to every sprite of the current sprite's group")},
        {"pal_advanced", QT_TR_NOOP("Ad&vanced..."), QT_TR_NOOP("Open the advanced palette editor")},
        {"pal_prev_grp", QT_TR_NOOP("Previous palette group"),
         QT_TR_NOOP("Go to the previous palette group")},
        {"pal_next_grp", QT_TR_NOOP("Next palette group"), QT_TR_NOOP("Go to the next palette group")},
        {"pal_prev", QT_TR_NOOP("Previous palette"), QT_TR_NOOP("Go to the previous palette")},
        {"pal_next", QT_TR_NOOP("Next palette"), QT_TR_NOOP("Go to the next palette")},

        // The organizer and the thumbnails.
        {"org_palette", QT_TR_NOOP("&Palettes"), QT_TR_NOOP("Organize the palettes instead of the sprites")},
        {"org_up", QT_TR_NOOP("Move &up"), QT_TR_NOOP("Move the selected items up")},
        {"org_down", QT_TR_NOOP("Move &down"), QT_TR_NOOP("Move the selected items down")},
        {"org_up_10", QT_TR_NOOP("Move up 10"), QT_TR_NOOP("Move the selected items up by ten")},
        {"org_down_10", QT_TR_NOOP("Move down 10"), QT_TR_NOOP("Move the selected items down by ten")},
        {"org_top", QT_TR_NOOP("Move to &top"), QT_TR_NOOP("Move the selected items to the top")},
        {"org_bottom", QT_TR_NOOP("Move to &bottom"), QT_TR_NOOP("Move the selected items to the bottom")},
        {"org_auto", QT_TR_NOOP("&Sort"), QT_TR_NOOP("Sort the items by group and number")},
        {"thumb_add", QT_TR_NOOP("&Add frames"),
         QT_TR_NOOP("Add the selected sprites as frames of the current action")},
        {"thumb_add_all", QT_TR_NOOP("Add a&ll frames"),
         QT_TR_NOOP("Add every sprite of the group as frames")},
        {"thumb_new", QT_TR_NOOP("&New action..."), QT_TR_NOOP("Make a new action of the selected sprites")},
        {"thumb_new_all", QT_TR_NOOP("New action of a&ll..."),
         QT_TR_NOOP("Make a new action of every sprite of the group")},
        {"thumb_save", QT_TR_NOOP("&Save images..."), QT_TR_NOOP("Save the selected sprites as image files")},
        // The animations editor.
        {"air_new", QT_TR_NOOP("&New animations"), QT_TR_NOOP("Start an empty animation file")},
        {"air_open", QT_TR_NOOP("&Open animations..."), QT_TR_NOOP("Open another animation file")},
        {"air_save", QT_TR_NOOP("&Save animations"), QT_TR_NOOP("Save the animation file")},
        {"air_saveas", QT_TR_NOOP("Save animations &as..."),
         QT_TR_NOOP("Save the animation file under another name")},
        {"air_text_mode", QT_TR_NOOP("&Text mode"), QT_TR_NOOP("Edit the animation file as text")},
        {"air_add", QT_TR_NOOP("&Add action..."), QT_TR_NOOP("Add a new action")},
        {"air_delete", QT_TR_NOOP("&Delete action"), QT_TR_NOOP("Delete the current action")},
        {"air_duplicate", QT_TR_NOOP("D&uplicate action"), QT_TR_NOOP("Copy the current action behind it")},
        {"air_edit_text", QT_TR_NOOP("&Edit action text..."),
         QT_TR_NOOP("Edit the text of the current action")},
        {"air_save_gif", QT_TR_NOOP("Save the current animation as an animated GIF..."),
         QT_TR_NOOP("Save the current action as an animated GIF file")},
        {"air_play", QT_TR_NOOP("&Play"), QT_TR_NOOP("Play the current action at the game's speed")},
        {"air_stop", QT_TR_NOOP("S&top"), QT_TR_NOOP("Stop playing")},
        {"air_frame_add", QT_TR_NOOP("Add &frame"), QT_TR_NOOP("Add a frame after the current one")},
        {"air_frame_delete", QT_TR_NOOP("Delete f&rame"), QT_TR_NOOP("Delete the current frame")},
        {"air_frameall_time", QT_TR_NOOP("Time to following frames"),
         QT_TR_NOOP("Give the current frame's time to the frames after it")},
        {"air_frameall_flip", QT_TR_NOOP("Flip to following frames"),
         QT_TR_NOOP("Give the current frame's flip to the frames after it")},
        {"air_frameall_trans", QT_TR_NOOP("Transparency to following frames"),
         QT_TR_NOOP("Give the current frame's transparency to the frames after it")},
        {"air_frame_align", QT_TR_NOOP("Align &frames..."),
         QT_TR_NOOP("Move the offsets of frames together")},
        {"air_clsn_add1", QT_TR_NOOP("Draw &attack box"),
         QT_TR_NOOP("Draw a new attack box (Clsn1) in the view")},
        {"air_clsn_add2", QT_TR_NOOP("Draw &collision box"),
         QT_TR_NOOP("Draw a new collision box (Clsn2) in the view")},
        {"air_clsn_del", QT_TR_NOOP("Delete &box"), QT_TR_NOOP("Delete the selected boxes")},
        {"air_clsn_delall", QT_TR_NOOP("Delete boxes of the frame"),
         QT_TR_NOOP("Delete every box of the current frame")},
        {"air_clsn_delall_anim", QT_TR_NOOP("Delete boxes of the action"),
         QT_TR_NOOP("Delete every box of the current action")},
        {"air_clsn_type", QT_TR_NOOP("Switch box &kind"),
         QT_TR_NOOP("Turn attack boxes into collision boxes and back")},
        {"air_clsn_default", QT_TR_NOOP("Switch &default"),
         QT_TR_NOOP("Turn boxes into default boxes and back")},
        {"air_clsn_prev", QT_TR_NOOP("Boxes of the previous frame"),
         QT_TR_NOOP("Copy the previous frame's boxes to this frame")},
        {"air_clsn_allinst", QT_TR_NOOP("Boxes to every &instance"),
         QT_TR_NOOP("Give this frame's boxes to every frame that shows the same image")},
        {"air_import_proj", QT_TR_NOOP("&Import from a project..."),
         QT_TR_NOOP("Import actions from another project")},
        {"air_pos_left", QT_TR_NOOP("Move frame left"), QT_TR_NOOP("Move the frame one pixel left")},
        {"air_pos_up", QT_TR_NOOP("Move frame up"), QT_TR_NOOP("Move the frame one pixel up")},
        {"air_pos_right", QT_TR_NOOP("Move frame right"), QT_TR_NOOP("Move the frame one pixel right")},
        {"air_pos_down", QT_TR_NOOP("Move frame down"), QT_TR_NOOP("Move the frame one pixel down")},
        {"air_prev_anim", QT_TR_NOOP("Previous action"), QT_TR_NOOP("Go to the previous action")},
        {"air_next_anim", QT_TR_NOOP("Next action"), QT_TR_NOOP("Go to the next action")},
        {"air_prev_frame", QT_TR_NOOP("Previous frame"), QT_TR_NOOP("Go to the previous frame")},
        {"air_next_frame", QT_TR_NOOP("Next frame"), QT_TR_NOOP("Go to the next frame")},
        // The sounds editor.
        {"snd_new", QT_TR_NOOP("&New sounds"), QT_TR_NOOP("Start an empty sound file")},
        {"snd_open", QT_TR_NOOP("&Open sounds..."), QT_TR_NOOP("Open another sound file")},
        {"snd_save", QT_TR_NOOP("&Save sounds"), QT_TR_NOOP("Save the sound file")},
        {"snd_saveas", QT_TR_NOOP("Save sounds &as..."),
         QT_TR_NOOP("Save the sound file under another name")},
        {"snd_add", QT_TR_NOOP("&Add sounds..."), QT_TR_NOOP("Add sounds from WAV files")},
        {"snd_delete", QT_TR_NOOP("&Delete sound"), QT_TR_NOOP("Delete the current sound")},
        {"snd_openwav", QT_TR_NOOP("&Replace WAV..."), QT_TR_NOOP("Replace the current sound by a WAV file")},
        {"snd_savewav", QT_TR_NOOP("Save &WAV..."), QT_TR_NOOP("Save the current sound as a WAV file")},
        {"snd_duplicate", QT_TR_NOOP("D&uplicate sound"), QT_TR_NOOP("Copy the current sound behind it")},
        {"snd_delete_grp", QT_TR_NOOP("Delete &group..."), QT_TR_NOOP("Delete the sounds of a group")},
        {"snd_rename_grp", QT_TR_NOOP("Re&number group..."),
         QT_TR_NOOP("Move the sounds of a group to another group")},
        {"snd_play", QT_TR_NOOP("&Play"), QT_TR_NOOP("Play the current sound once")},
        {"snd_play_loop", QT_TR_NOOP("Play in a &loop"),
         QT_TR_NOOP("Play the current sound again and again")},
        {"snd_stop", QT_TR_NOOP("S&top"), QT_TR_NOOP("Stop playing")},
        {"snd_export", QT_TR_NOOP("&Export..."), QT_TR_NOOP("Export sounds as WAV files with a list")},
        {"snd_import", QT_TR_NOOP("&Import..."), QT_TR_NOOP("Import sounds from an export list")},
        {"snd_import_proj", QT_TR_NOOP("Import from a &project..."),
         QT_TR_NOOP("Import sounds from another open project")},
        {"snd_prev_grp", QT_TR_NOOP("Previous group"),
         QT_TR_NOOP("Go to the first sound of the previous group")},
        {"snd_next_grp", QT_TR_NOOP("Next group"), QT_TR_NOOP("Go to the first sound of the next group")},
        {"snd_prev", QT_TR_NOOP("Previous sound"), QT_TR_NOOP("Go to the previous sound")},
        {"snd_next", QT_TR_NOOP("Next sound"), QT_TR_NOOP("Go to the next sound")},
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
