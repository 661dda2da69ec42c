#include "QWindowState.h"

#include "QMugenModel.h"

const QStringList QWindowState::floatingNames = {QStringLiteral("find_multi"), QStringLiteral("clipboard"),
                                                 QStringLiteral("calculator")};

namespace {

// A key the configuration never held reads as an invalid value, not as 0 or false.
void readInt(QMugenModel& config, const QString& key, int* value)
{
    const QVariant stored = config.settings.value(key);
    bool ok = false;
    const int number = stored.toInt(&ok);
    if (stored.isValid() && ok) *value = number;
}

void readBool(QMugenModel& config, const QString& key, bool* value)
{
    const QVariant stored = config.settings.value(key);
    if (stored.isValid()) *value = stored.toBool();
}

} // namespace

void QWindowState::read(QMugenModel& config)
{
    int left = geometry.x(), top = geometry.y(), width = geometry.width(), height = geometry.height();
    readInt(config, QStringLiteral("window_left"), &left);
    readInt(config, QStringLiteral("window_top"), &top);
    readInt(config, QStringLiteral("window_width"), &width);
    readInt(config, QStringLiteral("window_height"), &height);
    // A size of nothing would leave a window nobody can find.
    if (width > 0 && height > 0) geometry = QRect(left, top, width, height);
    readInt(config, QStringLiteral("window_state"), &state);
    readBool(config, QStringLiteral("show_action_list"), &showActionList);
    readBool(config, QStringLiteral("show_left_panel"), &showLeftPanel);
    readBool(config, QStringLiteral("show_right_panel"), &showRightPanel);
    readBool(config, QStringLiteral("show_organizer"), &showOrganizer);
    readBool(config, QStringLiteral("show_quicksearch"), &showQuickSearch);
    readInt(config, QStringLiteral("action_list_width"), &actionListWidth);
    readInt(config, QStringLiteral("action_list_area"), &actionListArea);
    readBool(config, QStringLiteral("main_toolbar"), &mainToolbar);
    readBool(config, QStringLiteral("extra_toolbar"), &extraToolbar);
    readBool(config, QStringLiteral("toolbar_break"), &toolbarBreak);
    readBool(config, QStringLiteral("toolbar_first"), &toolbarFirst);
    for (const QString& name : floatingNames) {
        Floating tool = floating.value(name);
        int x = tool.position.x(), y = tool.position.y();
        readBool(config, QStringLiteral("show_%1").arg(name), &tool.shown);
        readInt(config, QStringLiteral("%1_x").arg(name), &x);
        readInt(config, QStringLiteral("%1_y").arg(name), &y);
        tool.position = QPoint(x, y);
        floating.insert(name, tool);
    }
}

void QWindowState::write(QMugenModel& config) const
{
    config[QStringLiteral("window_left")] = geometry.x();
    config[QStringLiteral("window_top")] = geometry.y();
    config[QStringLiteral("window_width")] = geometry.width();
    config[QStringLiteral("window_height")] = geometry.height();
    config[QStringLiteral("window_state")] = state;
    config[QStringLiteral("show_action_list")] = showActionList;
    config[QStringLiteral("show_left_panel")] = showLeftPanel;
    config[QStringLiteral("show_right_panel")] = showRightPanel;
    config[QStringLiteral("show_organizer")] = showOrganizer;
    config[QStringLiteral("show_quicksearch")] = showQuickSearch;
    config[QStringLiteral("action_list_width")] = actionListWidth;
    config[QStringLiteral("action_list_area")] = actionListArea;
    config[QStringLiteral("main_toolbar")] = mainToolbar;
    config[QStringLiteral("extra_toolbar")] = extraToolbar;
    config[QStringLiteral("toolbar_break")] = toolbarBreak;
    config[QStringLiteral("toolbar_first")] = toolbarFirst;
    for (auto it = floating.cbegin(); it != floating.cend(); ++it) {
        config[QStringLiteral("show_%1").arg(it.key())] = it.value().shown;
        config[QStringLiteral("%1_x").arg(it.key())] = it.value().position.x();
        config[QStringLiteral("%1_y").arg(it.key())] = it.value().position.y();
    }
}
