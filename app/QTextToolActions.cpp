#include "QTextToolActions.h"

#include "QActionManager.h"
#include "QActionTexts.h"
#include "QMugenModel.h"
#include "QTextTools.h"

#include <QAction>
#include <QMenu>

void addTextToolActions(QActionManager* manager, const QList<int>& scopes, QTextTools* tools, QMenu* view,
                        QMenu* code)
{
    const auto add = [manager, scopes, tools](QMenu* menu, const char* name, bool checkable, auto slot) {
        const QString key = QLatin1String(name);
        QAction* action = manager->add(scopes, key, QActionTexts::id(key), checkable, tools, slot);
        action->setObjectName(key);
        menu->addAction(action);
        return action;
    };
    add(view, "view_sctrl_list", true, &QTextTools::setSctrlListShown)
        ->setChecked(flagSetting("show_sctrl_list", true));
    add(view, "view_text_bar", true, &QTextTools::setTextBarShown)
        ->setChecked(flagSetting("show_text_bar", true));
    view->addSeparator();
    code->addSeparator();
    add(code, "code_snippet_insert", false, &QTextTools::snipInsert);
    add(code, "code_snippet_new", false, &QTextTools::snipNew);
    add(code, "code_snippet_edit", false, &QTextTools::snipEdit);
    code->addSeparator();
    add(code, "st_sctrl_new", false, &QTextTools::sCtrlNew);
    add(code, "st_sctrl_edit", false, &QTextTools::sCtrlEdit);
    add(code, "st_sctrl_delete", false, &QTextTools::sCtrlDel);
}
