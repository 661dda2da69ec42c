// The rules of switching editors and workspaces, without a window: fake editors write what is done to
// them into one log, in order.

#include "QEditorSwitcher.h"
#include "QInterfaceEditor.h"

#include <QTest>

namespace {

QStringList journal;

struct FakeWorkspace : QInterfaceWorkspace
{
    explicit FakeWorkspace(QString name) : name(std::move(name)) {}
    void connectWorkspace() override { journal << name + QStringLiteral(" connect"); }
    void disconnectWorkspace() override { journal << name + QStringLiteral(" disconnect"); }
    void activate() override { journal << name + QStringLiteral(" activate"); }
    void deactivate() override { journal << name + QStringLiteral(" deactivate"); }
    QString name;
};

struct FakeEditor : QInterfaceEditor
{
    FakeEditor(int number, int workspace, QProjectFileType kind, QString name)
        : editorNumber(number), workspaceNumber(workspace), kind(kind), name(std::move(name))
    {}
    QString title() const override { return name; }
    bool isModified() const override { return modified; }
    int workspace() const override { return workspaceNumber; }
    QProjectFileType fileType() const override { return kind; }
    int number() const override { return editorNumber; }
    int scope() const override { return editorNumber + 1; }
    void connectEditor() override { journal << name + QStringLiteral(" connect"); }
    void disconnectEditor() override { journal << name + QStringLiteral(" disconnect"); }
    void activate() override { journal << name + QStringLiteral(" activate"); }
    void deactivate() override { journal << name + QStringLiteral(" deactivate"); }
    void navigate(int fileIndex, int index, int subIndex) override
    {
        journal << QStringLiteral("%1 navigate %2 %3 %4").arg(name).arg(fileIndex).arg(index).arg(subIndex);
    }
    bool isAvailable() const override { return available; }

    int editorNumber;
    int workspaceNumber;
    QProjectFileType kind;
    QString name;
    bool modified = false;
    bool available = true;
};

} // namespace

class tst_EditorSwitcher : public QObject
{
    Q_OBJECT

    FakeWorkspace text{QStringLiteral("text")};
    FakeWorkspace sprite{QStringLiteral("sprite")};
    FakeEditor definitions{0, 0, pftDefinitions, QStringLiteral("Definitions")};
    FakeEditor sprites{1, 1, pftSprites, QStringLiteral("Sprites")};
    FakeEditor commands{3, 0, pftCommands, QStringLiteral("Commands")};
    FakeEditor states{4, 0, pftStates, QStringLiteral("States")};
    FakeEditor moreStates{5, 0, pftStates, QStringLiteral("More states")};

    QEditorSwitcher make()
    {
        QEditorSwitcher::Hooks hooks;
        hooks.showWorkspace = [](int number) { journal << QStringLiteral("show %1").arg(number); };
        hooks.setScope = [](int scope) { journal << QStringLiteral("scope %1").arg(scope); };
        hooks.checkEditorAction = [](int number) { journal << QStringLiteral("check %1").arg(number); };
        hooks.setPanelTitle = [](const QString& title) { journal << QStringLiteral("title ") + title; };
        hooks.clearPanels = []() { journal << QStringLiteral("clear panels"); };
        QEditorSwitcher switcher(hooks);
        switcher.addWorkspace(0, &text);
        switcher.addWorkspace(1, &sprite);
        for (FakeEditor* editor : {&definitions, &sprites, &commands, &states, &moreStates})
            switcher.addEditor(editor);
        return switcher;
    }

private Q_SLOTS:
    void init()
    {
        journal.clear();
        for (FakeEditor* editor : {&definitions, &sprites, &commands, &states, &moreStates}) {
            editor->modified = false;
            editor->available = true;
        }
    }

    // Between workspaces, within one, to the same editor, and to a number without an editor.
    void switching()
    {
        QEditorSwitcher switcher = make();
        switcher.switchTo(0);
        QCOMPARE(journal, (QStringList{"Definitions connect", "check 0", "title Definitions", "show 0",
                                       "text connect", "text activate", "Definitions activate", "scope 1"}));
        journal.clear();
        switcher.switchTo(1);
        QCOMPARE(journal,
                 (QStringList{"Definitions disconnect", "Definitions deactivate", "Sprites connect",
                              "check 1", "title Sprites", "text disconnect", "text deactivate", "show 1",
                              "sprite connect", "sprite activate", "Sprites activate", "scope 2"}));
        switcher.switchTo(3);
        journal.clear();
        // Two editors of one workspace leave the page alone.
        switcher.switchTo(4);
        QCOMPARE(journal, (QStringList{"Commands disconnect", "Commands deactivate", "States connect",
                                       "check 4", "title States", "States activate", "scope 5"}));
        journal.clear();
        // The current editor again: hooks run, the wiring stays.
        switcher.switchTo(4);
        QCOMPARE(journal, (QStringList{"States deactivate", "title States", "States activate", "scope 5"}));
        journal.clear();
        switcher.switchTo(7);
        QCOMPARE(journal, (QStringList{"States disconnect", "States deactivate", "check 9", "text disconnect",
                                       "text deactivate", "clear panels", "scope 9"}));
        QCOMPARE(switcher.currentEditor(), QEditorSwitcher::NoEditor);
        QCOMPARE(switcher.currentWorkspace(), QEditorSwitcher::NoWorkspace);
    }

    void panelTitleMarksChanges()
    {
        QEditorSwitcher switcher = make();
        QCOMPARE(switcher.panelTitle([](const QString& text) { return text; }), QString());
        switcher.switchTo(3);
        commands.modified = true;
        QCOMPARE(switcher.panelTitle([](const QString& text) { return text.toUpper(); }),
                 QStringLiteral("COMMANDS*"));
        commands.modified = false;
        QCOMPARE(switcher.panelTitle([](const QString& text) { return text; }), QStringLiteral("Commands"));
    }

    // The first available editor of the file kind, in number order; nothing when none qualifies.
    void navigation()
    {
        QEditorSwitcher switcher = make();
        QVERIFY(switcher.navigate(pftStates, 2, 40, 0));
        QCOMPARE(switcher.currentEditor(), 4);
        QCOMPARE(journal.last(), QStringLiteral("States navigate 2 40 0"));
        states.available = false;
        QVERIFY(switcher.navigate(pftStates, 0, 3, 1));
        QCOMPARE(switcher.currentEditor(), 5);
        journal.clear();
        QVERIFY(!switcher.navigate(pftSounds, 0, 1, 0));
        QVERIFY(journal.isEmpty());
        QCOMPARE(switcher.currentEditor(), 5);
    }
};

QTEST_GUILESS_MAIN(tst_EditorSwitcher)
#include "tst_EditorSwitcher.moc"
