// The outline and the tree of variables of M.U.G.E.N. text, read back through the item model as a view
// would, and the recycling of their nodes.

#include "QMugenSyntaxHierarchy.h"
#include "QTextEncoding.h"
#include "TestData.h"

#include <QFile>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

namespace {

// One line per item: depth by indent, then name, the value behind "=" if any, and "@line".
void dump(const QMugenSyntaxHierarchy& model, const QModelIndex& parent, int depth, QStringList* out)
{
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        QString text = QString(depth * 2, QLatin1Char(' ')) + index.data().toString();
        const QString value = model.findValue(parent.data().toString(), index.data().toString());
        if (parent.isValid() && !value.isEmpty()) text += QStringLiteral(" = ") + value;
        *out << text + QStringLiteral(" @%1").arg(model.lineForIndex(index));
        QCOMPARE(model.parent(index), parent);
        dump(model, index, depth + 1, out);
    }
}

QStringList dump(const QMugenSyntaxHierarchy& model)
{
    QStringList out;
    dump(model, QModelIndex(), 0, &out);
    return out;
}

// The variables with leaves only, as "Integer 5: 200, 210".
QStringList usedVariables(QMugenSyntaxHierarchy& model)
{
    model.setMode(QMugenSyntaxHierarchy::Variables);
    QStringList out;
    for (int top = 0; top < model.rowCount(); ++top) {
        const QModelIndex row = model.index(top, 0);
        for (int n = 0; n < model.rowCount(row); ++n) {
            const QModelIndex variable = model.index(n, 0, row);
            QStringList states;
            for (int leaf = 0; leaf < model.rowCount(variable); ++leaf)
                states << model.index(leaf, 0, variable).data().toString();
            if (!states.isEmpty())
                out << QStringLiteral("%1 %2: %3")
                           .arg(row.data().toString(), variable.data().toString(),
                                states.join(QStringLiteral(", ")));
        }
    }
    model.setMode(QMugenSyntaxHierarchy::Outline);
    return out;
}

QString makeCns(int lines)
{
    QString text;
    int state = 0;
    while (text.count(QLatin1Char('\n')) < lines) {
        ++state;
        text += QStringLiteral(
                    "; State %1\n[Statedef %1]\ntype = S\nanim = %1\n\n[State %1, Set]\ntype = VarSet\n"
                    "trigger1 = 1\nvar(%2) = 1\n\n[State %1, End]\ntype = ChangeState\n"
                    "trigger1 = AnimTime = 0\nvalue = 0\n\n")
                    .arg(state)
                    .arg(state % 60);
    }
    return text;
}

} // namespace

class tst_MugenHierarchy : public QObject
{
    Q_OBJECT

private slots:
    void outline_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("tree");

        QTest::newRow("cns") << QStringLiteral(
                                    "[Data]\nlife = 1000\npower = 3000 ; max\n\n"
                                    "; Stand\n[Statedef 0]\ntype = S\n\n"
                                    "[State 0, 1]\ntype = ChangeAnim\ntrigger1 = 1\n\n"
                                    ";------\n[Statedef 200]\ntype = C\n[State 200, 1]\ntype = Null\n")
                             << QStringList{"Data @1",      "  life = 1000 @2", "  power = 3000 @3",
                                            "0 - Stand @6", "  0, 1 @9",        "200 @14",
                                            "  200, 1 @16"};
        QTest::newRow("cmd") << QStringLiteral(
                                    "[Remap]\nx = x\n[Command]\nname = \"a\"\ncommand = a\n"
                                    "[Command]\nname = \"b\"\ncommand = b\n[Command]\nname = \"a\"\n"
                                    "command = ~a\n[Statedef -1]\n")
                             << QStringList{"Remap @1", "  x = x @2", "Commands @3", "  a @3",
                                            "  b @6",   "  a @9",     "-1 @12"};
        QTest::newRow("air") << QStringLiteral("; Standing\n[Begin Action 0]\nClsn2: 1\n0,0, 0,0, 5\n\n"
                                               "[Begin Action 5] ; turn\n5,0, 0,0, 5\n")
                             << QStringList{"Begin Action 0 - Standing @2", "Begin Action 5 @6"};
        QTest::newRow("def") << QStringLiteral("; Definitions\n\n[Info]\nname = \"Kung Fu Man\"\n"
                                               "localcoord = 320, 240\nauthor =\n[Files]\ncns = kfm.cns\n"
                                               "[En.Quotes]\nvictory1 = \"Win\"\nvictory2 = 2\nfoo = \"x\"\n")
                             << QStringList{"Info @3",
                                            "  name = Kung Fu Man @4",
                                            "  localcoord = 320, 240 @5",
                                            "  author @6",
                                            "Files @7",
                                            "  cns = kfm.cns @8",
                                            "En.Quotes @9",
                                            "  victory1 = Win @10"};
        QTest::newRow("text before the first section")
            << QStringLiteral("junk = 1\n\n[Foo]\n") << QStringList{"Foo @3"};
        QTest::newRow("no section") << QStringLiteral("a = 1\n; b\n") << QStringList{};
    }

    void outline()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, tree);
        QMugenSyntaxHierarchy model;
        QSignalSpy updated(&model, &QSyntaxHierarchy::updated);
        model.update(text);
        QCOMPARE(dump(model), tree);
        QCOMPARE(updated.count(), 1);
    }

    void typesAndCounts()
    {
        QMugenSyntaxHierarchy model;
        model.update(
            QStringLiteral("[Statedef 10]\ntype = A\n[State 10]\ntype = HitDef\n[Statedef 11]\n"
                           "[Command]\nname = \"x\"\n[Command]\nname = \"x\"\n[Command]\nname = \"X\"\n"
                           "[Size]\n[Begin Action 1]\n[Info]\n[My.Quotes]\n[Camera]\n"));
        QStringList types;
        for (int row = 0; row < model.rowCount(); ++row) {
            const QModelIndex index = model.index(row, 0);
            types << model.index(row, 0).data().toString() + QLatin1Char(':') +
                         static_cast<QHierarchyItem*>(index.internalPointer())->type;
        }
        QCOMPARE(types, (QStringList{"10:a", "11:s", "Commands:commands", "Size:const", "Begin Action 1:anim",
                                     "Info:info", "My.Quotes:quote", "Camera:camera"}));
        const auto* state =
            static_cast<QHierarchyItem*>(model.index(0, 0, model.index(0, 0)).internalPointer());
        QCOMPARE(state->type, QStringLiteral("hitdef"));
        QCOMPARE(model.commandCount(), 2);
        QCOMPARE(model.stateDefCount(), 2);
    }

    void variables_data()
    {
        QTest::addColumn<QString>("states");
        QTest::addColumn<QStringList>("used");
        QTest::newRow("varset forms") << QStringLiteral("[State 200, a]\ntype = VarSet\nvar(5) = 1\n"
                                                        "[State 200, b]\ntype = VarAdd\nfv = 3\nvalue = 1\n"
                                                        "[State 200, c]\ntype = ParentVarSet\nv = 7\n")
                                      << QStringList{"Integer 5: 200", "Integer 7: 200", "Float 3: 200"};
        QTest::newRow("out of range") << QStringLiteral("[State 200]\ntype = VarSet\nvar(61) = 1\n"
                                                        "[State 200]\ntype = VarSet\nfvar(40) = 1\n")
                                      << QStringList{};
        QTest::newRow("range") << QStringLiteral(
                                      "[State 200]\ntype = VarRangeSet\nfirst = 3\nlast = 6\nvalue = 0\n")
                               << QStringList{"Integer 3: 200", "Integer 4: 200", "Integer 5: 200",
                                              "Integer 6: 200"};
        QTest::newRow("float range") << QStringLiteral(
                                            "[State 200]\ntype = VarRangeSet\nfirst = 38\nlast = 45\n"
                                            "fvalue = 0\n")
                                     << QStringList{"Float 38: 200", "Float 39: 200"};
        QTest::newRow("inline assignment") << QStringLiteral("[State 200]\ntype = Null\n"
                                                             "trigger1 = (var(5) := 1) || var(9)  :=  2\n")
                                           << QStringList{"Integer 5: 200", "Integer 9: 200"};
        QTest::newRow("reads are no writes") << QStringLiteral("[State 200]\ntype = ChangeState\n"
                                                               "trigger1 = var(5) = 1\nvalue = var(6)\n")
                                             << QStringList{};
        QTest::newRow("one leaf per statedef")
            << QStringLiteral(
                   "[State 200]\ntype = VarSet\nvar(1) = 1\n[State 200]\ntype = VarAdd\nvar(1) = 1\n"
                   "[Statedef 201]\n[State 201]\ntype = VarSet\nv = 1\n")
            << QStringList{"Integer 1: 200, 201"};
    }

    void variables()
    {
        QFETCH(QString, states);
        QFETCH(QStringList, used);
        QMugenSyntaxHierarchy model;
        model.update(QStringLiteral("[Statedef 200]\ntype = S\n") + states);
        QCOMPARE(usedVariables(model), used);
    }

    void variablesView()
    {
        QMugenSyntaxHierarchy model;
        model.update(QStringLiteral("[State 0]\ntype = VarSet\nvar(2) = 1\n\n[Statedef 7]\n[State 7]\n"
                                    "type = VarSet\nfvar(39) = 1\n"));
        QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
        QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
        model.setMode(QMugenSyntaxHierarchy::Variables);
        QCOMPARE(removed.count(), 1);
        QCOMPARE(inserted.count(), 1);
        QCOMPARE(model.rowCount(), 2);
        const QModelIndex integers = model.index(0, 0);
        const QModelIndex floats = model.index(1, 0);
        QCOMPARE(integers.data(Qt::ToolTipRole).toString(), QStringLiteral("Integer"));
        QCOMPARE(model.rowCount(integers), 60);
        QCOMPARE(model.rowCount(floats), 40);
        QCOMPARE(model.index(39, 0, floats).data().toString(), QStringLiteral("39"));
        // A State before any StateDef writes for the root, which has no line.
        const QModelIndex rootLeaf = model.index(0, 0, model.index(2, 0, integers));
        QVERIFY(rootLeaf.isValid());
        QCOMPARE(model.lineForIndex(rootLeaf), 0);
        const QModelIndex leaf = model.index(0, 0, model.index(39, 0, floats));
        QCOMPARE(leaf.data().toString(), QStringLiteral("7"));
        QCOMPARE(model.lineForIndex(leaf), 5);
        QCOMPARE(model.parent(leaf), model.index(39, 0, floats));
        QCOMPARE(model.lineForIndex(floats), 0);
        model.setMode(QMugenSyntaxHierarchy::Variables);
        QCOMPARE(removed.count(), 1);
    }

    void lineRoundTrip()
    {
        QMugenSyntaxHierarchy model;
        model.update(QStringLiteral("; top\n\n[Statedef 0]\ntype = S\n\n[State 0, a]\ntype = Null\n\n"
                                    "[State 0, b]\ntype = Null\n[Data]\nlife = 1\n\nattack = 2\n"));
        QList<QModelIndex> items;
        for (int row = 0; row < model.rowCount(); ++row) {
            const QModelIndex top = model.index(row, 0);
            items << top;
            for (int child = 0; child < model.rowCount(top); ++child)
                items << model.index(child, 0, top);
        }
        QCOMPARE(items.size(), 6);
        for (const QModelIndex& index : items)
            QCOMPARE(model.indexForLine(model.lineForIndex(index) - 1), index);
        // Lines between items belong to the item above them, the deepest one.
        QCOMPARE(model.indexForLine(7).data().toString(), QStringLiteral("0, a"));
        QCOMPARE(model.indexForLine(13).data().toString(), QStringLiteral("attack"));
        QCOMPARE(model.indexForLine(12).data().toString(), QStringLiteral("life"));
        QVERIFY(!model.indexForLine(1).isValid());
        QCOMPARE(model.lineForIndex(QModelIndex()), 0);
    }

    void sectionsAndValues_data()
    {
        QTest::addColumn<QString>("section");
        QTest::addColumn<QString>("key");
        QTest::addColumn<bool>("exists");
        QTest::addColumn<QString>("value");
        QTest::newRow("exact") << "Info"
                               << "name" << true << "KFM";
        QTest::newRow("any case") << "INFO"
                                  << "NAME" << true << "KFM";
        QTest::newRow("second section of the name") << "Files"
                                                    << "sff" << true << "kfm.sff";
        QTest::newRow("no such key") << "Info"
                                     << "author" << true << "";
        QTest::newRow("no such section") << "Arcade"
                                         << "name" << false << "";
        QTest::newRow("state under statedef") << "0, 1"
                                              << "type" << false << "";
    }

    void sectionsAndValues()
    {
        QFETCH(QString, section);
        QFETCH(QString, key);
        QFETCH(bool, exists);
        QFETCH(QString, value);
        QMugenSyntaxHierarchy model;
        model.update(QStringLiteral("[Info]\nname = \"KFM\" ; the name\n[Files]\ncns = kfm.cns\n"
                                    "[Files]\nsff = kfm.sff\n[Statedef 0]\n[State 0, 1]\ntype = Null\n"));
        QCOMPARE(model.sectionExists(section), exists);
        QCOMPARE(model.findValue(section, key), value);
    }

    void emptyText()
    {
        QMugenSyntaxHierarchy model;
        model.update(QStringLiteral("[Info]\n"));
        QSignalSpy updated(&model, &QSyntaxHierarchy::updated);
        QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
        model.update(QString());
        QCOMPARE(model.rowCount(), 0);
        QCOMPARE(updated.count(), 0);
        QCOMPARE(removed.count(), 1);
        QVERIFY(!model.sectionExists(QStringLiteral("Info")));
    }

    void recycling()
    {
        const QString text = makeCns(2000);
        QMugenSyntaxHierarchy model;
        model.update(text);
        // Each hierarchy has its own roots; only the nodes of the trees are recycled.
        QMugenSyntaxHierarchy other;
        const QStringList first = dump(model);
        const QStringList firstVariables = usedVariables(model);
        const int items = QHierarchyItem::created;
        const int usages = QVarUsageItem::created;
        for (int round = 0; round < 3; ++round) {
            model.update(text);
            QCOMPARE(QHierarchyItem::created, items);
            QCOMPARE(QVarUsageItem::created, usages);
        }
        QCOMPARE(dump(model), first);
        QCOMPARE(usedVariables(model), firstVariables);
        // A second hierarchy takes the nodes the first gave back.
        model.update(QString());
        other.update(text);
        QCOMPARE(QHierarchyItem::created, items);
        QCOMPARE(QVarUsageItem::created, usages);
    }

    void realStateCount()
    {
        TAVREL_REQUIRE_TESTDATA();
        QFile file(TestData::root() + QStringLiteral("/elecbyte-mugen11/chars/kfm/kfm.cns"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString text = QTextEncoding::decode(file.readAll(), 0);
        const QRegularExpression header(QStringLiteral("^\\s*\\[\\s*statedef\\b"),
                                        QRegularExpression::CaseInsensitiveOption |
                                            QRegularExpression::MultilineOption);
        int expected = 0;
        for (auto it = header.globalMatch(text); it.hasNext(); it.next())
            ++expected;
        QVERIFY(expected > 10);
        QMugenSyntaxHierarchy model;
        model.update(text);
        QCOMPARE(model.stateDefCount(), expected);
        const QRegularExpression number(QStringLiteral("^-?\\d"));
        int statedefs = 0;
        for (int row = 0; row < model.rowCount(); ++row)
            statedefs += number.match(model.index(row, 0).data().toString()).hasMatch();
        QCOMPARE(statedefs, expected);
    }
};

QTEST_GUILESS_MAIN(tst_MugenHierarchy)
#include "tst_MugenHierarchy.moc"
