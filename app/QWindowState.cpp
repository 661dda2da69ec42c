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

// The switches and numbers of the window, each under its key: one table serves reading and writing.
const struct
{
    const char* key;
    bool QWindowState::*member;
} flags[] = {
    {"show_action_list", &QWindowState::showActionList},  {"show_left_panel", &QWindowState::showLeftPanel},
    {"show_right_panel", &QWindowState::showRightPanel},  {"show_organizer", &QWindowState::showOrganizer},
    {"show_quicksearch", &QWindowState::showQuickSearch}, {"main_toolbar", &QWindowState::mainToolbar},
    {"extra_toolbar", &QWindowState::extraToolbar},       {"toolbar_break", &QWindowState::toolbarBreak},
    {"toolbar_first", &QWindowState::toolbarFirst}};

const struct
{
    const char* key;
    int QWindowState::*member;
} numbers[] = {{"window_state", &QWindowState::state},
               {"action_list_width", &QWindowState::actionListWidth},
               {"action_list_area", &QWindowState::actionListArea}};

void QWindowState::read(QMugenModel& config)
{
    int left = geometry.x(), top = geometry.y(), width = geometry.width(), height = geometry.height();
    readInt(config, QStringLiteral("window_left"), &left);
    readInt(config, QStringLiteral("window_top"), &top);
    readInt(config, QStringLiteral("window_width"), &width);
    readInt(config, QStringLiteral("window_height"), &height);
    // A size of nothing would leave a window nobody can find.
    if (width > 0 && height > 0) geometry = QRect(left, top, width, height);
    for (const auto& flag : flags)
        readBool(config, QLatin1String(flag.key), &(this->*flag.member));
    for (const auto& number : numbers)
        readInt(config, QLatin1String(number.key), &(this->*number.member));
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
    for (const auto& flag : flags)
        config[QLatin1String(flag.key)] = this->*flag.member;
    for (const auto& number : numbers)
        config[QLatin1String(number.key)] = this->*number.member;
    for (auto it = floating.cbegin(); it != floating.cend(); ++it) {
        config[QStringLiteral("show_%1").arg(it.key())] = it.value().shown;
        config[QStringLiteral("%1_x").arg(it.key())] = it.value().position.x();
        config[QStringLiteral("%1_y").arg(it.key())] = it.value().position.y();
    }
}
