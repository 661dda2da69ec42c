#include "QActionInfo.h"
#include "QActionList.h"
#include "QActionManager.h"
#include "QActionTexts.h"
#include "QDialogRecorder.h"

#include <QAbstractItemModelTester>
#include <QAction>
#include <QCoreApplication>
#include <QFile>
#include <QMainWindow>
#include <QPointer>
#include <QSet>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

// Counts what reaches it through Qt 5 style connections.
class Receiver : public QObject
{
    Q_OBJECT
public:
    int runs = 0;
    QList<bool> toggles;

public slots:
    void run() { ++runs; }
    void toggle(bool on) { toggles.append(on); }

signals:
    void enable(bool on);
};

namespace {

using Scopes = QList<int>;

const QString conflictTitle = QStringLiteral("Conflict!");
const QString conflictText =
    QStringLiteral("This shortcut conflict with another that resides in the same scope.");

// A window with a manager whose two models are watched by the model tester for the whole test, and a
// dialog recorder so that no warning ever blocks.
struct Fixture
{
    QDialogRecorder dialogs;
    QMainWindow window;
    QActionManager* manager = new QActionManager(&window);
    QAbstractItemModelTester tableTester{manager, QAbstractItemModelTester::FailureReportingMode::QtTest};
    QAbstractItemModelTester listTester{manager->actionList(),
                                        QAbstractItemModelTester::FailureReportingMode::QtTest};

    QAction* add(const Scopes& scopes, const QString& name, Receiver& receiver)
    {
        return manager->add(scopes, name, QActionTexts::id(name), false, &receiver, SLOT(run()));
    }
    QAction* keyOf(const QAction* action) const { return QActionInfo::of(action).keyAction; }
    void press(QAction* keyAction, int scope)
    {
        manager->setScope(scope);
        keyAction->trigger();
    }
};

QKeySequence keys(const char* text)
{
    return QKeySequence::fromString(QLatin1String(text), QKeySequence::PortableText);
}

void writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    QVERIFY2(file.open(QIODevice::WriteOnly), qPrintable(path));
    file.write(bytes);
}

// The (action, keys) pairs of a shortcuts file, in file order.
QList<QPair<QString, QString>> readPairs(const QString& path)
{
    QList<QPair<QString, QString>> pairs;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return pairs;
    QXmlStreamReader xml(&file);
    if (!xml.readNextStartElement() || xml.name() != QLatin1String("shortcuts")) return pairs;
    while (xml.readNextStartElement()) {
        if (xml.name() == QLatin1String("shortcut"))
            pairs.append({xml.attributes().value(QLatin1String("action")).toString(),
                          xml.attributes().value(QLatin1String("keys")).toString()});
        xml.skipCurrentElement();
    }
    return pairs;
}

// The families of actions whose texts exist, each registered in the scopes its editors use.
struct Family
{
    Scopes scopes;
    QStringList names;
};

QList<Family> families()
{
    const auto names = [](const char* list) { return QString::fromLatin1(list).split(QLatin1Char(' ')); };
    const Scopes everywhere = {QActionInfo::Everywhere};
    return {
        {everywhere,
         names("file_new file_open file_close file_close_all file_close_others file_save file_saveas "
               "file_backup file_load_backup file_check_errors file_run_mugen file_exit edit_undo "
               "edit_redo edit_cut edit_copy edit_paste edit_find_replace edit_find_replace_multi "
               "view_left_panel view_right_panel view_organizer view_actions view_calculator "
               "view_clipboard view_zoomreset view_zoomout view_zoomin tools_options tools_export_html "
               "tools_script_editor ref_docs help_about editor_new editor_open editor_save "
               "editor_saveas")},
        {{QActionInfo::DefinitionsScope, QActionInfo::CommandsScope, QActionInfo::StatesScope},
         names("view_sctrl_list view_text_bar code_snippet_insert code_snippet_new code_snippet_edit "
               "st_sctrl_new st_sctrl_edit st_sctrl_delete txt_goto txt_prev_error txt_next_error "
               "txt_prev_deprecation txt_next_deprecation txt_comment")},
        {{QActionInfo::DefinitionsScope}, names("def_new def_open def_save def_saveas")},
        {{QActionInfo::CommandsScope}, names("cmd_new cmd_open cmd_save cmd_saveas")},
        {{QActionInfo::StatesScope},
         names("st_new st_open st_save st_saveas st_var_list st_var_log st_palfx st_offset st_throw")},
        {everywhere,
         names("editor_definitions editor_sprites editor_animations editor_commands editor_states "
               "editor_sounds")},
        {{QActionInfo::SpritesScope},
         names(
             "spr_new spr_open spr_save spr_saveas spr_add spr_delete spr_openimg spr_saveimg "
             "spr_saveimg_aligned spr_crop spr_duplicate spr_delete_grp spr_rename_grp spr_align "
             "spr_edit_img "
             "spr_split_channels spr_export spr_import spr_import_proj spr_frame_spr spr_prev spr_next "
             "spr_prev_grp spr_next_grp spr_pos_left spr_pos_up spr_pos_right spr_pos_down spr_align_topleft "
             "spr_align_topcenter spr_align_topright spr_align_centerleft spr_align_centercenter "
             "spr_align_centerright spr_align_bottomleft spr_align_bottomcenter spr_align_bottomright "
             "pal_clear pal_clear_unused pal_add pal_delete pal_delete_duplicates pal_open pal_save "
             "pal_switch_count pal_remap pal_undo pal_redo pal_switch_color pal_pick_color pal_set_color "
             "pal_apply_sprite pal_apply_group pal_advanced pal_prev_grp pal_next_grp pal_prev pal_next "
             "org_palette")},
        {{QActionInfo::SpritesScope, QActionInfo::AnimationsScope},
         names(
             "view_center_axis view_spr_cross view_anim_cross view_extra_cross view_rulers view_guide_lines "
             "view_attack_clsn view_collision_clsn view_default_clsn1 view_default_clsn2")},
        {{QActionInfo::SpritesScope, QActionInfo::AnimationsScope, QActionInfo::CommandsScope,
          QActionInfo::SoundsScope},
         names("org_up org_down org_up_10 org_down_10 org_top org_bottom org_auto")},
        {{QActionInfo::AnimationsScope}, names("thumb_add thumb_add_all thumb_new thumb_new_all thumb_save")},
        {{QActionInfo::AnimationsScope},
         names("air_new air_open air_save air_saveas air_text_mode air_add air_delete air_duplicate "
               "air_edit_text air_save_gif air_play air_stop air_frame_add air_frame_delete "
               "air_frameall_time air_frameall_flip air_frameall_trans air_frame_align air_clsn_add1 "
               "air_clsn_add2 air_clsn_del air_clsn_delall air_clsn_delall_anim air_clsn_type "
               "air_clsn_default air_clsn_prev air_clsn_allinst air_import_proj air_pos_left air_pos_up "
               "air_pos_right air_pos_down air_prev_anim air_next_anim air_prev_frame air_next_frame")},
        {{QActionInfo::SoundsScope},
         names("snd_new snd_open snd_save snd_saveas snd_add snd_delete snd_openwav snd_savewav "
               "snd_duplicate snd_delete_grp snd_rename_grp snd_play snd_play_loop snd_stop snd_export "
               "snd_import snd_import_proj snd_prev_grp snd_next_grp snd_prev snd_next")},
    };
}

} // namespace

class tst_ActionManager : public QObject
{
    Q_OBJECT

private slots:
    void editRoleBindsKeys_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<bool>("accepted");
        QTest::addColumn<QString>("shown");

        QTest::newRow("text") << QVariant(QStringLiteral("Ctrl+K")) << true << "Ctrl+K";
        QTest::newRow("empty clears") << QVariant(QString()) << true << "";
        QTest::newRow("taken in the same scope") << QVariant(QStringLiteral("Ctrl+T")) << false << "F2";
    }

    void editRoleBindsKeys()
    {
        QFETCH(QVariant, value);
        QFETCH(bool, accepted);
        QFETCH(QString, shown);

        Fixture f;
        Receiver receiver;
        QAction* action = f.add({3}, "a", receiver);
        QAction* other = f.add({3}, "b", receiver);
        QVERIFY(f.manager->setShortcut(action, keys("F2")));
        QVERIFY(f.manager->setShortcut(other, keys("Ctrl+T")));
        QSignalSpy changed(f.manager, &QAbstractItemModel::dataChanged);

        QCOMPARE(f.manager->setData(f.manager->index(0, 1), value), accepted);
        QCOMPARE(f.manager->index(0, 1).data(Qt::EditRole).toString(), shown);
        QCOMPARE(changed.isEmpty(), !accepted);
        QCOMPARE(f.dialogs.calls.size(), accepted ? 0 : 1);
        QVERIFY(!f.manager->setData(f.manager->index(0, 0), value));
    }

    void disjointScopesShareOneKey_data()
    {
        QTest::addColumn<Scopes>("scopesA");
        QTest::addColumn<Scopes>("scopesB");
        QTest::addColumn<int>("current");
        QTest::addColumn<int>("runsA");
        QTest::addColumn<int>("runsB");

        QTest::newRow("first's scope current") << Scopes{2} << Scopes{3} << 2 << 1 << 0;
        QTest::newRow("second's scope current") << Scopes{2} << Scopes{3} << 3 << 0 << 1;
        QTest::newRow("neither scope current") << Scopes{2} << Scopes{3} << 5 << 0 << 0;
        QTest::newRow("no scope current") << Scopes{2} << Scopes{3} << 9 << 0 << 0;
        QTest::newRow("past no scope") << Scopes{2} << Scopes{3} << 12 << 0 << 0;
        QTest::newRow("negative scope") << Scopes{2} << Scopes{3} << -1 << 0 << 0;
        QTest::newRow("several scopes each") << Scopes{1, 4, 6} << Scopes{2, 3, 5, 7} << 4 << 1 << 0;
        QTest::newRow("scopes end at a negative") << Scopes{1, -1, 2} << Scopes{2} << 2 << 0 << 1;
        QTest::newRow("frame only, twice") << Scopes{0} << Scopes{0} << 0 << 1 << 1;
        QTest::newRow("frame with an editor") << Scopes{0, 6} << Scopes{0, 2} << 2 << 0 << 1;
    }

    void disjointScopesShareOneKey()
    {
        QFETCH(Scopes, scopesA);
        QFETCH(Scopes, scopesB);
        QFETCH(int, current);
        QFETCH(int, runsA);
        QFETCH(int, runsB);

        Fixture f;
        int ranA = 0;
        Receiver b;
        QAction* first =
            f.manager->add(scopesA, "a", QActionTexts::Unknown, false, &f.window, [&ranA]() { ++ranA; });
        QAction* second = f.add(scopesB, "b", b);
        QVERIFY(f.manager->setShortcut(first, keys("Ctrl+K")));
        QVERIFY(f.manager->setShortcut(second, keys("Ctrl+K")));

        QCOMPARE(f.dialogs.calls.size(), 0);
        QCOMPARE(f.manager->keyActions().size(), 1);
        QAction* key = f.manager->keyActions().first();
        QCOMPARE(QActionManager::useCount(key), 2);
        QCOMPARE(f.keyOf(first), key);
        QCOMPARE(f.keyOf(second), key);
        QCOMPARE(key->shortcut(), keys("Ctrl+K"));
        QVERIFY(f.window.actions().contains(key));

        f.press(key, current);
        QCOMPARE(ranA, runsA);
        QCOMPARE(b.runs, runsB);
    }

    void keyHonoursCheckedAndEnabledState()
    {
        Fixture f;
        Receiver receiver;
        QAction* toggle = f.manager->add({5}, "st_var_list", QActionTexts::id("st_var_list"), true, &receiver,
                                         SLOT(toggle(bool)), SIGNAL(enable(bool)));
        QVERIFY(f.manager->setShortcut(toggle, keys("F4")));
        QAction* key = f.keyOf(toggle);

        f.press(key, 5);
        f.press(key, 5);
        QCOMPARE(receiver.toggles, (QList<bool>{true, false}));

        emit receiver.enable(false);
        QVERIFY(!toggle->isEnabled());
        f.press(key, 5);
        QCOMPARE(receiver.toggles.size(), 2);
        QVERIFY(!(f.manager->actionList()->flags(f.manager->actionList()->index(0)) & Qt::ItemIsEnabled));

        emit receiver.enable(true);
        f.press(key, 5);
        QCOMPARE(receiver.toggles, (QList<bool>{true, false, true}));
    }

    void sharedScopesConflict_data()
    {
        QTest::addColumn<Scopes>("scopesA");
        QTest::addColumn<Scopes>("scopesB");

        QTest::newRow("everywhere, then frame only") << Scopes{8} << Scopes{0};
        QTest::newRow("frame only, then everywhere") << Scopes{0} << Scopes{8};
        QTest::newRow("everywhere, then an editor") << Scopes{8} << Scopes{2};
        QTest::newRow("an editor, then everywhere") << Scopes{2} << Scopes{8};
        QTest::newRow("everywhere twice") << Scopes{8} << Scopes{8};
        QTest::newRow("one scope in common") << Scopes{1, 3} << Scopes{3, 6};
        QTest::newRow("tools scope in common") << Scopes{7} << Scopes{0, 7};
        QTest::newRow("frame and an editor in common") << Scopes{0, 5} << Scopes{0, 5};
    }

    void sharedScopesConflict()
    {
        QFETCH(Scopes, scopesA);
        QFETCH(Scopes, scopesB);

        Fixture f;
        Receiver receiver;
        QAction* first = f.add(scopesA, "a", receiver);
        QAction* second = f.add(scopesB, "b", receiver);
        QVERIFY(f.manager->setShortcut(first, keys("Ctrl+K")));
        QVERIFY(f.manager->setShortcut(second, keys("F2")));
        QAction* taken = f.keyOf(first);
        QAction* own = f.keyOf(second);

        QVERIFY(!f.manager->setShortcut(second, keys("Ctrl+K")));

        QCOMPARE(f.dialogs.calls.size(), 1);
        QCOMPARE(f.dialogs.calls[0].icon, QUserDialogs::Warning);
        QCOMPARE(f.dialogs.calls[0].title, conflictTitle);
        QCOMPARE(f.dialogs.calls[0].text, conflictText);
        QCOMPARE(f.manager->keyActions(), (QList<QAction*>{taken, own}));
        QCOMPARE(QActionManager::useCount(taken), 1);
        QCOMPARE(QActionManager::useCount(own), 1);
        QCOMPARE(f.manager->shortcut(second), keys("F2"));
        QCOMPARE(second->text(), QStringLiteral("b\tF2"));
    }

    void keyUsesFollowBindings()
    {
        Fixture f;
        Receiver a, b;
        QAction* first = f.add({1}, "a", a);
        QAction* second = f.manager->add({2}, "b", QActionTexts::Unknown, false, &b, &Receiver::run);
        QVERIFY(f.manager->setShortcut(first, keys("Ctrl+K")));
        QPointer<QAction> key = f.keyOf(first);

        // Binding the same keys again is no second use, and no loss of the only one.
        QVERIFY(f.manager->setShortcut(first, keys("Ctrl+K")));
        QCOMPARE(QActionManager::useCount(key), 1);
        QVERIFY(f.manager->setShortcut(second, keys("Ctrl+K")));
        QVERIFY(f.manager->setShortcut(first, keys("Ctrl+K")));
        QCOMPARE(QActionManager::useCount(key), 2);

        // Moving one use away keeps the key for the other.
        QVERIFY(f.manager->setShortcut(first, keys("Ctrl+L")));
        QPointer<QAction> moved = f.keyOf(first);
        QCOMPARE(QActionManager::useCount(key), 1);
        QCOMPARE(QActionManager::useCount(moved), 1);

        // Clearing a shared key keeps it for the other; clearing the last use deletes it.
        QVERIFY(f.manager->setShortcut(first, QKeySequence()));
        QVERIFY(!moved);
        QCOMPARE(first->text(), QStringLiteral("a"));
        f.press(key, 1);
        f.press(key, 2);
        QCOMPARE(a.runs, 0);
        QCOMPARE(b.runs, 1);
        QVERIFY(f.manager->setShortcut(second, QKeySequence()));
        QVERIFY(!key);
        QVERIFY(f.manager->keyActions().isEmpty());
        QVERIFY(f.window.actions().isEmpty());
        QCOMPARE(f.dialogs.calls.size(), 0);
    }

    void deletedActionGivesUpItsKeys()
    {
        Fixture f;
        Receiver receiver;
        QAction* first = f.add({1}, "a", receiver);
        QAction* second = f.add({2}, "b", receiver);
        QVERIFY(f.manager->setShortcut(first, keys("Ctrl+K")));
        QVERIFY(f.manager->setShortcut(second, keys("Ctrl+K")));
        f.manager->setScope(1);
        QPointer<QAction> shared = f.keyOf(second);
        QAction* lone = f.add({1}, "c", receiver);
        QVERIFY(f.manager->setShortcut(lone, keys("F3")));
        QPointer<QAction> loneKey = f.keyOf(lone);

        delete first;
        delete lone;

        QCOMPARE(f.manager->actions(), QList<QAction*>{second});
        QCOMPARE(f.manager->actionList()->rowCount(), 0);
        QCOMPARE(QActionManager::useCount(shared), 1);
        QVERIFY(!loneKey);
        QCOMPARE(f.manager->keyActions(), QList<QAction*>{shared.data()});
    }

    void listShowsTheCurrentScope()
    {
        Fixture f;
        Receiver receiver;
        QAction* def = f.add({1}, "def_new", receiver);
        QAction* spr = f.add({2}, "spr_new", receiver);
        QAction* both = f.add({1, 2}, "txt_goto", receiver);
        QAction* global = f.add({8}, "file_new", receiver);
        QActionList* list = f.manager->actionList();
        QCOMPARE(list->rowCount(), 0);

        f.manager->setScope(1);
        QCOMPARE(list->rowCount(), 2);
        QCOMPARE(list->action(0), def);
        QCOMPARE(list->action(1), both);
        QCOMPARE(list->index(0).data().toString(), QStringLiteral("New definitions"));
        QCOMPARE(list->index(0).data(Qt::ToolTipRole).toString(), def->toolTip());
        QCOMPARE(list->index(1).data(QActionList::ActionRole).value<QAction*>(), both);

        QAction* later = f.add({1}, "def_save", receiver);
        QCOMPARE(list->rowCount(), 3);
        QCOMPARE(list->action(2), later);

        f.manager->setScope(2);
        QCOMPARE(list->rowCount(), 2);
        QCOMPARE(list->action(0), spr);
        f.manager->setScope(8);
        QCOMPARE(list->rowCount(), 1);
        QCOMPARE(list->action(0), global);
        f.manager->setScope(9);
        QCOMPARE(list->rowCount(), 0);
    }

    void saveAndLoadRoundTrip()
    {
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const QString path = dir.filePath("shortcuts.xml");
        Receiver receiver;
        const QList<QPair<QString, QString>> bound = {{"file_new", "Ctrl+N"},
                                                      {"txt_comment", "Ctrl+/"},
                                                      {"spr_delete", "Ctrl+K, Ctrl+D"},
                                                      {"snd_play", "F9"}};
        {
            Fixture f;
            f.add({8}, "file_new", receiver);
            f.add({1, 4, 5}, "txt_comment", receiver);
            f.add({2}, "spr_delete", receiver);
            f.add({3}, "air_play", receiver);
            f.add({6}, "snd_play", receiver);
            for (const auto& [name, text] : bound)
                QVERIFY(f.manager->setShortcut(f.manager->find(name), keys(qPrintable(text))));
            QVERIFY(f.manager->save(path));
        }
        QCOMPARE(readPairs(path), bound);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readLine().startsWith("<?xml"));

        // A window without the sounds editor passes its binding over.
        Fixture f;
        f.add({8}, "file_new", receiver);
        f.add({1, 4, 5}, "txt_comment", receiver);
        f.add({2}, "spr_delete", receiver);
        f.add({3}, "air_play", receiver);
        QCOMPARE(f.manager->load(dir.filePath("absent.xml")), 0);
        QCOMPARE(f.manager->load(path), 3);
        QCOMPARE(f.manager->shortcut(f.manager->find("file_new")), keys("Ctrl+N"));
        QCOMPARE(f.manager->shortcut(f.manager->find("txt_comment")), keys("Ctrl+/"));
        QCOMPARE(f.manager->shortcut(f.manager->find("spr_delete")), keys("Ctrl+K, Ctrl+D"));
        QVERIFY(f.manager->shortcut(f.manager->find("air_play")).isEmpty());
        QCOMPARE(f.dialogs.calls.size(), 0);
    }

    void conflictWhileLoadingWarns()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath("shortcuts.xml");
        writeFile(path, "<?xml version=\"1.0\"?>\n<shortcuts>\n"
                        "  <shortcut action=\"a\" keys=\"F2\"/>\n"
                        "  <shortcut action=\"unknown\" keys=\"F3\"/>\n"
                        "  <shortcut action=\"b\" keys=\"F2\"/>\n"
                        "</shortcuts>\n");
        Fixture f;
        Receiver receiver;
        QAction* first = f.add({4}, "a", receiver);
        QAction* second = f.add({4, 5}, "b", receiver);

        QCOMPARE(f.manager->load(path), 1);
        QCOMPARE(f.manager->shortcut(first), keys("F2"));
        QVERIFY(f.manager->shortcut(second).isEmpty());
        QCOMPARE(f.dialogs.calls.size(), 1);
        QCOMPARE(f.dialogs.calls[0].title, conflictTitle);
        QCOMPARE(f.dialogs.calls[0].text, conflictText);
    }

    void everyActionHasTexts()
    {
        QSet<unsigned> ids;
        for (const Family& family : families()) {
            for (const QString& name : family.names) {
                const unsigned id = QActionTexts::id(name);
                QVERIFY2(id != QActionTexts::Unknown, qPrintable(name));
                QCOMPARE(QActionTexts::name(id), name);
                QVERIFY2(!QActionTexts::text(id).isEmpty(), qPrintable(name));
                QVERIFY2(!QActionTexts::toolTip(id).isEmpty(), qPrintable(name));
                ids.insert(id);
            }
        }
        QCOMPARE(unsigned(ids.size()), QActionTexts::count());
        QVERIFY(QActionTexts::text(QActionTexts::count()).isEmpty());
    }

    void shippedShortcutsLoadWithoutConflict()
    {
        const QString bin = qEnvironmentVariable("TAVREL_BIN_DIR");
        const QString path = !bin.isEmpty() && QFile::exists(bin + QStringLiteral("/shortcuts.xml"))
                                 ? bin + QStringLiteral("/shortcuts.xml")
                                 : QFINDTESTDATA("../../data/shortcuts.xml");
        QVERIFY2(!path.isEmpty(), "data/shortcuts.xml is missing");
        const auto shipped = readPairs(path);
        QVERIFY(shipped.size() > 20);

        Fixture f;
        Receiver receiver;
        for (const Family& family : families())
            for (const QString& name : family.names)
                f.add(family.scopes, name, receiver);

        QCOMPARE(f.manager->load(path), int(shipped.size()));
        QCOMPARE(f.dialogs.calls.size(), 0);
        for (const auto& [name, text] : shipped)
            QCOMPARE(f.manager->shortcut(f.manager->find(name)).toString(QKeySequence::PortableText), text);
        // One key action per key: editors of different scopes share keys (Page Down steps through sprites
        // and through sounds).
        QSet<QString> keys;
        for (const auto& [name, text] : shipped)
            keys.insert(text);
        QVERIFY(keys.size() < int(shipped.size()));
        QCOMPARE(f.manager->keyActions().size(), keys.size());
        QCOMPARE(f.manager->shortcut(f.manager->find("txt_comment")), QKeySequence(Qt::CTRL | Qt::Key_Slash));
    }
};

QTEST_MAIN(tst_ActionManager)
#include "tst_ActionManager.moc"
