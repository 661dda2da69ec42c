// The animation model on its text: reading and writing frame lines, which line is which element, how
// the model follows typing, and the operations of the model. The clipboard needs a GUI application.

#include "AnimationsTestSupport.h"
#include "QDialogRecorder.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QTest>
#include <QTextCursor>

#include <functional>

using FrameEdit = std::function<void(QAnimationFrame*)>;
using ModelEdit = std::function<void(QAnimations&)>;
Q_DECLARE_METATYPE(FrameEdit)
Q_DECLARE_METATYPE(ModelEdit)
Q_DECLARE_METATYPE(QCollisionBoxType)

static const QString action0 = QStringLiteral("[Begin Action 0]\n");

static QAnimationFrame* firstFrame(const QAirDocument& document)
{
    for (QAnimation* animation : document.model.animations)
        if (!animation->frames.isEmpty()) return animation->frames.first();
    return nullptr;
}

class tst_Animations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { registerTextElements(); }
    void cleanupTestCase() { unregisterTextElements(); }

    void frameLines_data();
    void frameLines();
    void frameSetters_data();
    void frameSetters();
    void recognisers_data();
    void recognisers();
    void structure_data();
    void structure();
    void typing_data();
    void typing();
    void insertBox_data();
    void insertBox();
    void boxesThroughTheModel();
    void undoneBoxLinesKeepTheirBytes();
    void marksAndFrames();
    void clsnTextRoundTrip();
    void actionOperations_data();
    void actionOperations();
    void copyAndPaste();
    void listModel();
    void projectFileAnswers();
};

void tst_Animations::frameLines_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("values");
    QTest::addColumn<QString>("written");
    auto row = [](const char* name, const char* line, const char* values, const char* written) {
        QTest::newRow(name) << line << values << written;
    };
    row("plain", "1,2, 3,4, 5", "1,2 3,4 5", "1,2, 3,4, 5");
    row("A with target", "0,0, 0,0, 5, , AS200D100", "0,0 0,0 5 A200/100", "0,0, 0,0, 5, , AS200D100");
    row("every column", "0,0, 0,0, -1, H, S, 2,3, 45", "0,0 0,0 -1 f2 S s2x3 r45",
        "0,0, 0,0, -1, H, S, 2,3, 45");
    row("vh", "1,2, 3,4, 5, vh", "1,2 3,4 5 f3", "1,2, 3,4, 5, HV");
    row("A without blank", "0,0, 0,0, 2, ,A", "0,0 0,0 2 A256/256", "0,0, 0,0, 2, , A");
    row("A1", "0,0, 0,0, 2,, a1", "0,0 0,0 2 A256/128", "0,0, 0,0, 2, , A1");
    row(".5 reads 0.55", "0,0,0,0,5,,,.5", "0,0 0,0 5 s0.55x1", "0,0, 0,0, 5, , , 0.55");
    row("scale Y alone", "0,0,0,0,5,,,,2", "0,0 0,0 5 s1x2", "0,0, 0,0, 5, , ,,2");
    row("scale X and angle", "0,0,0,0,5,,,2,,30", "0,0 0,0 5 s2x1 r30", "0,0, 0,0, 5, , , 2, , 30");
    row("flip and angle", "0,0, 0,0, 5, H, , , , 30", "0,0 0,0 5 f2 r30", "0,0, 0,0, 5, H, ,, , 30");
    row("group beyond 16 bits", "70000,0, 0,0, 5", "0,0 0,0 5", "0,0, 0,0, 5");
    row("unknown A word", "0,0, 0,0, 5, , AX9", "0,0 0,0 5 A", "0,0, 0,0, 5, , A");
    row("subtraction", "0,0, 0,0, 5, , s", "0,0 0,0 5 S", "0,0, 0,0, 5, , S");
    row("comment", "-1,0, 0,0, 10 ; hold", "-1,0 0,0 10", "-1,0, 0,0, 10");
}

void tst_Animations::frameLines()
{
    QFETCH(QString, line);
    QAirDocument document(action0 + line);
    QAnimationFrame* frame = firstFrame(document);
    QVERIFY(frame);
    QTEST(describeFrame(frame), "values");
    QTEST(frame->text(), "written");
    QCOMPARE(frame->lineText(), line);
}

void tst_Animations::frameSetters_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<FrameEdit>("edit");
    auto row = [](const char* name, const char* line, const char* expected, FrameEdit edit) {
        QTest::newRow(name) << line << expected << edit;
    };
    const char* plain = "0,0, 0,0, 5";
    row("time keeps the blend", "0,0, 0,0, 5, , AS200D100", "0,0, 0,0, 9, , AS200D100",
        [](auto* f) { f->setTime(9); });
    row("scale Y only", plain, "0,0, 0,0, 5, , ,,2", [](auto* f) { f->setScaleY(2); });
    row("angle after scale X", "0,0, 0,0, 5, , , 2", "0,0, 0,0, 5, , , 2, , 30",
        [](auto* f) { f->setAngle(30); });
    row("both flips", plain, "0,0, 0,0, 5, HV", [](auto* f) { f->setFlip(3); });
    row("vertical flip", plain, "0,0, 0,0, 5, V", [](auto* f) { f->setFlip(1); });
    row("subtraction", plain, "0,0, 0,0, 5, , S", [](auto* f) { f->setBlend(QAnimationFrameBlend(2)); });
    row("addition", "0,0, 0,0, 5, H", "0,0, 0,0, 5, H, A",
        [](auto* f) { f->setBlend(QAnimationFrameBlend(1)); });
    row("target 256/128", "0,0, 0,0, 5, , A", "0,0, 0,0, 5, , A1", [](auto* f) {
        f->setBlendTarget({256, 128});
    });
    row("target 256/64", "0,0, 0,0, 5, , A", "0,0, 0,0, 5, , AS256D64", [](auto* f) {
        f->setBlendTarget({256, 64});
    });
    row("scale 1 drops the tail", "0,0, 0,0, 5, H, , 2", "0,0, 0,0, 5, H", [](auto* f) { f->setScaleX(1); });
    row("six digits", plain, "0,0, 0,0, 5, , , 0.123457", [](auto* f) { f->setScaleX(0.1234567); });
    row("sprite and offset", plain, "200,3, 7,-12, 5", [](auto* f) {
        f->setSpriteGroup(200);
        f->setSpriteIndex(3);
        f->setOffsetX(7);
        f->setOffsetY(-12);
    });
    row("same value", "0,0,0,0,5", "0,0,0,0,5", [](auto* f) { f->setTime(5); });
}

void tst_Animations::frameSetters()
{
    QFETCH(QString, line);
    QFETCH(FrameEdit, edit);
    QAirDocument document(action0 + line);
    QAnimationFrame* frame = firstFrame(document);
    QVERIFY(frame);
    QSignalSpy updates(&document.editor, &QElementTextEditor::update);
    edit(frame);
    QTEST(document.editor.document->lastBlock().text(), "expected");
    // The setter wrote its own line: the document did not read it again.
    QCOMPARE(updates.count(), 0);
    QCOMPARE(compareWithFresh(document), QString());
}

void tst_Animations::recognisers_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("type");
    auto row = [](const char* name, const char* line, int type) { QTest::newRow(name) << line << type; };
    row("box", "  Clsn1[0] = 1, 2, 3, 4", etCollisionBox);
    row("box of a default set", "clsn2default[3]=1,-2,3,4", etCollisionBox);
    row("box, token too many", "Clsn1[0] = 1, 2, 3, 4 extra", 0);
    row("box, three numbers", "Clsn2[0] = 1, 2, 3", 0);
    row("set", "Clsn2: 5", etCollisionBoxes);
    row("default set", "clsn1default:0", etCollisionBoxes);
    row("no such set", "Clsn3: 1", 0);
    row("set, trailing word", "Clsn2: 5 x", 0);
    row("loop start", "Loopstart", etInterFrame);
    row("loop start, word", "LoopStart now", 0);
    row("interpolation", "interpolate OFFSET", etInterFrame);
    row("interpolation, unknown", "Interpolate Colour", 0);
    row("interpolation alone", "Interpolate", 0);
    row("action, trailing words", "[Begin Action 10] junk", etAnimation);
    row("negative action", "[begin  ACTION -5]", etAnimation);
    row("action without number", "[Begin Action x]", etUnknownGroup);
    row("frame", "1,2,3,4,5", etFrame);
    row("frame, four numbers", "1,2,3,4", 0);
    row("frame, real time", "1,2,3,4,5.5", 0);
}

void tst_Animations::recognisers()
{
    QFETCH(QString, line);
    QAirDocument document(action0 + line + QStringLiteral("\n0,0, 0,0, 1"));
    const QTextElement* element =
        QElementTextEditor::elementAt(document.editor.document->findBlockByNumber(1));
    QTEST(element ? element->type() : 0, "type");
}

void tst_Animations::structure_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("model");
    auto row = [](const char* name, const char* text, const char* model) {
        QTest::newRow(name) << text << model;
    };
    row("nearer Clsn1 set wins",
        "[Begin Action 0]\nClsn1: 1\n Clsn1[0] = 1,1,2,2\nClsn1: 1\n Clsn1[0] = 5,5,6,6\n0,0, 0,0, 1",
        "0: 0,0 0,0 1 C1(5,5,6,6)");
    row("default set, set and mark",
        "[Begin Action 0]\nClsn2Default: 1\n Clsn2[0] = 0,0,1,1\nClsn1: 1\n Clsn1[0] = 2,2,3,3\nLoopStart\n"
        "0,0, 0,0, 1\n0,1, 0,0, 1",
        "0: 0,0 0,0 1 M0 C1(2,2,3,3) C2D(0,0,1,1); 0,1 0,0 1");
    row("corners ordered", "[Begin Action 0]\nClsn2: 1\n  Clsn2[7] = 5, 6, 1, 2\n0,0, 0,0, 1",
        "0: 0,0 0,0 1 C2(1,2,5,6)");
    row("counts not trusted",
        "[Begin Action 0]\nClsn2: 7\n  Clsn2[4] = 1,1,2,2\n  Clsn2[4] = 3,3,4,4\n0,0, 0,0, 1",
        "0: 0,0 0,0 1 C2(1,1,2,2 3,3,4,4)");
    row("frames outside actions", "0,0, 0,0, 1\n[Begin Action 0]\n0,1, 0,0, 1\n[Other]\n0,2, 0,0, 1",
        "0: 0,1 0,0 1");
    row("mark above no frame", "[Begin Action 0]\n0,0,0,0,1\nLoopStart\n\n[Begin Action 1]\n0,0,0,0,2",
        "0: 0,0 0,0 1\n1: 0,0 0,0 2");
    row("mark ends a set's boxes",
        "[Begin Action 0]\nClsn1: 2\n Clsn1[0] = 1,1,2,2\nLoopStart\n Clsn1[1] = 3,3,4,4\n0,0,0,0,1",
        "0: 0,0 0,0 1 M0 C1(1,1,2,2)");
    row("empty and comment lines", "[Begin Action 0]\nClsn2: 1\n\n Clsn2[0] = 1,1,2,2\n; hit\n\n0,0,0,0,1",
        "0: 0,0 0,0 1 C2(1,1,2,2)");
    row("names", "; Stand\n[Begin Action 0]\n0,0,0,0,1\n\n;Walk\n\n[Begin Action 20]",
        "0 [Stand]: 0,0 0,0 1\n20 [Walk]: ");
}

void tst_Animations::structure()
{
    QFETCH(QString, text);
    QFETCH(QString, model);
    QAirDocument document(text);
    QCOMPARE(describeModel(document.model), model);
    QCOMPARE(checkModel(document.model), QString());
    // Loading rewrites nothing.
    QCOMPARE(document.text(), text);
    QVERIFY(!document.model.isModified());

    // A load reads the text top down; the same text pasted is read by following each change.
    QAirDocument pasted;
    pasted.model.rewriteOnLoad = false;
    QTextCursor(pasted.editor.document).insertText(text);
    QCOMPARE(describeModel(pasted.model), model);
    QCOMPARE(checkModel(pasted.model), QString());
}

// Rows are texts below "[Begin Action 0]"; an empty expected text is not compared.
void tst_Animations::typing_data()
{
    QTest::addColumn<QString>("marked");
    QTest::addColumn<QString>("insert");
    QTest::addColumn<QString>("model");
    QTest::addColumn<QString>("expectedText");
    auto row = [](const char* name, const char* marked, const char* insert, const char* model,
                  const char* text = "") { QTest::newRow(name) << marked << insert << model << text; };
    row("join two box lines", "Clsn2: 2\n  Clsn2[0] = 1, 1, 2, 2|\n|  Clsn2[1] = 3, 3, 4, 4\n0,0, 0,0, 1", "",
        "0: 0,0 0,0 1 C2()", "Clsn2: 0\n  Clsn2[0] = 1, 1, 2, 2  Clsn2[1] = 3, 3, 4, 4\n0,0, 0,0, 1");
    row("join two frame lines", "0,0, 0,0, 1|\n|0,1, 0,0, 2", "", "0: 0,0 0,0 10 s0x0 r2");
    row("delete across sections",
        "0,0, 0,0, 1\n|0,1, 0,0, 1\n\n[Begin Action 1]\n1,0, 0,0, 1\n|1,1, 0,0, 1\n\n[Begin Action 2]\n2,0, "
        "0,0, 1",
        "", "0: 0,0 0,0 1; 1,1 0,0 1\n2: 2,0 0,0 1");
    row("comment becomes a name", "0,0, 0,0, 1\n|\n[Begin Action 1]\n1,0,0,0,1", "; Jump",
        "0: 0,0 0,0 1\n1 [Jump]: 1,0 0,0 1");
    row("frame stops parsing", "0,0, 0,0, 1\n0,1, 0,0|, 1", "x", "0: 0,0 0,0 1");
    row("frame parses again", "0,0, 0,0, 1\n0,1, 0,0|x|, 1", "", "0: 0,0 0,0 1; 0,1 0,0 1");
    row("lost frame hands on its sets", "Clsn2: 1\n  Clsn2[0] = 1, 1, 2, 2\n|0,0, 0,0, 1|\n0,1, 0,0, 1", "",
        "0: 0,1 0,0 1 C2(1,1,2,2)");
    row("delete a box line",
        "Clsn2: 3\n  Clsn2[0] = 1, 1, 2, 2\n|  Clsn2[1] = 3, 3, 4, 4\n|  Clsn2[2] = 5, 5, 6, 6\n0,0, 0,0, 1",
        "", "0: 0,0 0,0 1 C2(1,1,2,2 5,5,6,6)",
        "Clsn2: 2\n  Clsn2[0] = 1, 1, 2, 2\n  Clsn2[1] = 5, 5, 6, 6\n0,0, 0,0, 1");
    row("delete the only box", "Clsn2: 1\n| Clsn2[0] = 1,1,2,2\n|0,0, 0,0, 1", "", "0: 0,0 0,0 1 C2()",
        "Clsn2: 0\n0,0, 0,0, 1");
    row("type a box line", "Clsn2: 1\n  Clsn2[0] = 1, 1, 2, 2|\n0,0, 0,0, 1", "\nclsn2[0]=4,4,3,3",
        "0: 0,0 0,0 1 C2(1,1,2,2 3,3,4,4)",
        "Clsn2: 2\n  Clsn2[0] = 1, 1, 2, 2\n  Clsn2[1] = 3, 3, 4, 4\n0,0, 0,0, 1");
    row("header typed between frames",
        "0,0, 0,0, 1\n|0,1, 0,0, 1\nClsn2: 1\n  Clsn2[0] = 1, 1, 2, 2\n0,2, 0,0, 1", "[Begin Action 5]\n",
        "0: 0,0 0,0 1\n5: 0,1 0,0 1; 0,2 0,0 1 C2(1,1,2,2)");
    row("header removed", "0,0, 0,0, 1\n|[Begin Action 5]\n|0,1, 0,0, 1", "", "0: 0,0 0,0 1; 0,1 0,0 1");
    row("unknown section typed", "0,0, 0,0, 1\n|0,1, 0,0, 1", "[Other]\n", "0: 0,0 0,0 1");
    row("Clsn1 to Clsn2", "Clsn|1|: 1\n  Clsn1[0] = 1, 1, 2, 2\n0,0, 0,0, 1", "2",
        "0: 0,0 0,0 1 C2(1,1,2,2)");
    row("nearer set typed", "Clsn1: 1\n  Clsn1[0] = 1, 1, 2, 2\n|0,0, 0,0, 1", "Clsn1: 0\n",
        "0: 0,0 0,0 1 C1()");
    row("frame typed below a set", "Clsn1: 1\n  Clsn1[0] = 1, 1, 2, 2\n|0,0, 0,0, 1", "0,9, 0,0, 1\n",
        "0: 0,9 0,0 1 C1(1,1,2,2); 0,0 0,0 1");
}

void tst_Animations::typing()
{
    QFETCH(QString, marked);
    QFETCH(QString, insert);
    QFETCH(QString, expectedText);
    QString text;
    int from, to;
    unmark(action0 + marked, text, from, to);
    QAirDocument document(text);
    QTextCursor cursor(document.editor.document);
    cursor.setPosition(from);
    cursor.setPosition(to, QTextCursor::KeepAnchor);
    cursor.insertText(insert);

    QTEST(describeModel(document.model), "model");
    if (!expectedText.isEmpty()) QCOMPARE(document.text(), action0 + expectedText);
    QCOMPARE(checkInvariants(document.editor), QString());
    QCOMPARE(checkModel(document.model), QString());
    QCOMPARE(compareWithFresh(document), QString());
}

void tst_Animations::insertBox_data()
{
    QTest::addColumn<QString>("sets");
    QTest::addColumn<QCollisionBoxType>("type");
    QTest::addColumn<QString>("expected");

    const QString c1 = QStringLiteral("Clsn1: 1\n  Clsn1[0] = 0, 0, 1, 1\n");
    const QString c2 = QStringLiteral("Clsn2: 1\n  Clsn2[0] = 0, 0, 1, 1\n");
    const QString c2d = QStringLiteral("Clsn2Default: 1\n  Clsn2[0] = 0, 0, 1, 1\n");
    const QString new1 = QStringLiteral("Clsn1: 1\n  Clsn1[0] = 1, 2, 3, 4\n");
    const QString new2 = QStringLiteral("Clsn2: 1\n  Clsn2[0] = 1, 2, 3, 4\n");
    const QString new1d = QStringLiteral("Clsn1Default: 1\n  Clsn1[0] = 1, 2, 3, 4\n");
    using T = QCollisionBoxType;
    QTest::newRow("first collision box") << QString() << T::Collision << new2;
    QTest::newRow("attack above collision") << c2 << T::Attack << new1 + c2;
    QTest::newRow("collision below attack") << c1 << T::Collision << c1 + new2;
    QTest::newRow("collision default on top")
        << c1 + c2 << T::CollisionDefault << "Clsn2Default: 1\n  Clsn2[0] = 1, 2, 3, 4\n" + c1 + c2;
    QTest::newRow("attack default above collision default") << c2d << T::AttackDefault << new1d + c2d;
    QTest::newRow("attack default above sets") << c2 << T::AttackDefault << new1d + c2;
    QTest::newRow("second box of a set")
        << c2 << T::Collision << "Clsn2: 2\n  Clsn2[0] = 0, 0, 1, 1\n  Clsn2[1] = 1, 2, 3, 4\n";
}

void tst_Animations::insertBox()
{
    QFETCH(QString, sets);
    QFETCH(QCollisionBoxType, type);
    QFETCH(QString, expected);
    const QString head = action0 + QStringLiteral("0,0, 0,0, 1\n");
    const QString tail = QStringLiteral("0,1, 0,0, 1\n");
    QAirDocument document(head + sets + tail);
    QAnimationFrame* frame = document.model.at(0)->frameAt(1);
    QVERIFY(frame);
    QSignalSpy updated(&document.editor, &QElementTextEditor::updated);
    const QRect rect(QPoint(1, 2), QPoint(3, 4));
    QCollisionBox* box = frame->insertBox(type, rect);
    QVERIFY(box);
    QCOMPARE(document.text(), head + expected + tail);
    QCOMPARE(box->rect(), rect);
    QCOMPARE(frame->hitBoxes(type)->boxes.last(), box);
    // One edit: one updated signal, one undo step.
    QCOMPARE(updated.count(), 1);
    document.editor.document->undo();
    QCOMPARE(document.text(), head + sets + tail);
    QCOMPARE(compareWithFresh(document), QString());
}

void tst_Animations::boxesThroughTheModel()
{
    QAirDocument document(action0 + QStringLiteral("Clsn2: 2\n  Clsn2[0] = 1,1,2,2\n  Clsn2[1] = 3,3,4,4\n"
                                                   "Clsn1: 1\n Clsn1[0] = 5,5,6,6\n0,0, 0,0, 1"));
    QAnimationFrame* frame = firstFrame(document);
    QCollisionBoxes* collision = frame->hitBoxes(QCollisionBoxType::Collision);
    QCOMPARE(collision->boxes.size(), 2);

    // A box set through the model writes its own line, corners ordered.
    collision->boxes.at(1)->setRect(QRect(QPoint(9, 9), QPoint(7, 8)));
    QCOMPARE(collision->boxes.at(1)->lineText(), QStringLiteral("  Clsn2[1] = 7, 8, 9, 9"));

    // Removing the first box renumbers the other and the count.
    collision->boxes.at(0)->remove();
    QCOMPARE(document.text(), action0 + QStringLiteral("Clsn2: 1\n  Clsn2[0] = 7, 8, 9, 9\n"
                                                       "Clsn1: 1\n Clsn1[0] = 5,5,6,6\n0,0, 0,0, 1"));
    // Removing the last box of a set through the model removes its declaration too.
    frame->hitBoxes(QCollisionBoxType::Attack)->boxes.at(0)->remove();
    QCOMPARE(document.text(), action0 + QStringLiteral("Clsn2: 1\n  Clsn2[0] = 7, 8, 9, 9\n0,0, 0,0, 1"));
    QVERIFY(!frame->hitBoxes(QCollisionBoxType::Attack));
    QCOMPARE(checkModel(document.model), QString());
    QCOMPARE(compareWithFresh(document), QString());
}

void tst_Animations::marksAndFrames()
{
    QAirDocument document(action0 + QStringLiteral("Clsn2: 1\n  Clsn2[0] = 1,1,2,2\n0,0, 0,0, 1\n\n"
                                                   "[Begin Action 1]\n"));
    QAnimation* first = document.model.at(0);
    QAnimationFrame* frame = first->frameAt(0);
    frame->setInterFrame(QInterFrameElementType::LoopStart, true);
    frame->setInterFrame(QInterFrameElementType::InterpolateScale, true);
    frame->setInterFrame(QInterFrameElementType::LoopStart, true);
    QCOMPARE(document.text(),
             action0 + QStringLiteral("Interpolate Scale\nLoopStart\nClsn2: 1\n"
                                      "  Clsn2[0] = 1,1,2,2\n0,0, 0,0, 1\n\n[Begin Action 1]\n"));
    QVERIFY(frame->checkInterFrame(QInterFrameElementType::LoopStart));
    frame->setInterFrame(QInterFrameElementType::LoopStart, false);
    QVERIFY(!frame->checkInterFrame(QInterFrameElementType::LoopStart));
    QVERIFY(frame->checkInterFrame(QInterFrameElementType::InterpolateScale));

    // A new frame above the first one goes above its marks and boxes, which stay with it.
    QAnimationFrame* inserted = first->frameInsert(0);
    QCOMPARE(first->frameAt(0), inserted);
    QCOMPARE(first->frameAt(1), frame);
    QVERIFY(frame->hitBoxes(QCollisionBoxType::Collision));
    QAnimationFrame* added = first->frameAdd();
    QCOMPARE(first->frameCount(), 3);
    QCOMPARE(added->lineText(), QStringLiteral("-1,0, 0,0, 10"));
    // An action without frames takes its first frame right below its header.
    QVERIFY(document.model.at(1)->frameAdd());
    QCOMPARE(document.text(), action0 + QStringLiteral("-1,0, 0,0, 10\nInterpolate Scale\nClsn2: 1\n"
                                                       "  Clsn2[0] = 1,1,2,2\n0,0, 0,0, 1\n-1,0, 0,0, 10\n\n"
                                                       "[Begin Action 1]\n-1,0, 0,0, 10\n"));
    // Removing a frame removes its marks and boxes.
    frame->remove();
    QCOMPARE(document.text(),
             action0 + QStringLiteral("-1,0, 0,0, 10\n-1,0, 0,0, 10\n\n[Begin Action 1]\n-1,0, 0,0, 10\n"));
    QCOMPARE(compareWithFresh(document), QString());
}

void tst_Animations::clsnTextRoundTrip()
{
    const QString clsn = QStringLiteral("Clsn2Default: 1\n  Clsn2[0] = -5, -60, 5, 0\nClsn1: 2\n"
                                        "  Clsn1[0] = 1, 2, 3, 4\n  Clsn1[1] = 5, 6, 7, 8");
    QAirDocument document(action0 + QStringLiteral("LoopStart\n") + clsn +
                          QStringLiteral("\n0,0, 0,0, 1\n0,1, 0,0, 1"));
    QAnimation* animation = document.model.at(0);
    QCOMPARE(animation->frameAt(0)->clsnText(), clsn);
    QCOMPARE(animation->frameAt(1)->clsnText(), QString());
    animation->frameAt(1)->importClsnText(clsn + QStringLiteral("\nClsn2: 1\n Clsn2[0] = 9"));
    QCOMPARE(describeFrame(animation->frameAt(1)),
             QStringLiteral("0,1 0,0 1 C1(1,2,3,4 5,6,7,8) C2(-1,-1,9,0) C2D(-5,-60,5,0)"));
    QCOMPARE(compareWithFresh(document), QString());
}

void tst_Animations::actionOperations_data()
{
    QTest::addColumn<ModelEdit>("edit");
    QTest::addColumn<QString>("expected");
    // The text: "; Stand" action 0, "; Walk" action 20, action 10.
    const QString stand = QStringLiteral("; Stand\n[Begin Action 0]\n0,0, 0,0, 1\n\n");
    const QString walk = QStringLiteral("; Walk\n[Begin Action 20]\n20,0, 0,0, 1\n\n");
    const QString ten = QStringLiteral("[Begin Action 10]\n10,0, 0,0, 1\n");
    QTest::newRow("add") << ModelEdit([](QAnimations& m) { QCOMPARE(m.add(7)->number, 7); })
                         << stand + walk + ten + "\n[Begin Action 7]\n";
    QTest::newRow("insert") << ModelEdit([](QAnimations& m) { QCOMPARE(m.insert(1, 7)->number, 7); })
                            << stand + "[Begin Action 7]\n\n" + walk + ten;
    QTest::newRow("remove") << ModelEdit([](QAnimations& m) { m.remove(1); }) << stand + ten;
    QTest::newRow("move to the front")
        << ModelEdit([](QAnimations& m) { m.move(2, 0); }) << ten + stand + walk;
    QTest::newRow("duplicate") << ModelEdit([](QAnimations& m) { m.duplicate(1, 21); })
                               << stand + walk + "; Walk\n[Begin Action 21]\n20,0, 0,0, 1\n\n" + ten;
    QTest::newRow("organize") << ModelEdit([](QAnimations& m) {
        QSignalSpy updated(&m, &QAnimations::updated);
        m.autoOrganize();
        QCOMPARE(updated.count(), 1);
    }) << stand + ten + walk;
}

void tst_Animations::actionOperations()
{
    QFETCH(ModelEdit, edit);
    QAirDocument document(
        QStringLiteral("; Stand\n[Begin Action 0]\n0,0, 0,0, 1\n\n; Walk\n"
                       "[Begin Action 20]\n20,0, 0,0, 1\n\n[Begin Action 10]\n10,0, 0,0, 1\n"));
    QAnimations& model = document.model;
    QCOMPARE(model.findByName(0, QStringLiteral("Walk")), 1);
    QCOMPARE(model.findByName(0, QStringLiteral("10")), 2);
    QCOMPARE(model.findByNumber(1, 0), -1);
    edit(model);
    QTEST(document.text(), "expected");
    QCOMPARE(checkModel(model), QString());
    QCOMPARE(compareWithFresh(document), QString());
    QVERIFY(model.isModified());
}

void tst_Animations::copyAndPaste()
{
    QAirDocument document(action0 + QStringLiteral("0,0, 0,0, 1\n\n[Begin Action 1]\n1,0, 0,0, 1\n"));
    document.model.copy(1);
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("[Begin Action 1]\n1,0, 0,0, 1"));
    QVERIFY(document.model.paste(0));
    QCOMPARE(document.text(),
             QStringLiteral("\n[Begin Action 1]\n1,0, 0,0, 1\n\n[Begin Action 0]\n0,0, 0,0, 1\n\n"
                            "[Begin Action 1]\n1,0, 0,0, 1\n"));
    QCOMPARE(describeModel(document.model), QStringLiteral("1: 1,0 0,0 1\n0: 0,0 0,0 1\n1: 1,0 0,0 1"));
    // Text without an action line leaves no action.
    QGuiApplication::clipboard()->setText(QStringLiteral("; nothing"));
    QVERIFY(document.model.paste(9));
    QCOMPARE(document.model.count(), 3);
    QGuiApplication::clipboard()->clear();
    QVERIFY(!document.model.paste(0));
    QCOMPARE(compareWithFresh(document), QString());
}

void tst_Animations::listModel()
{
    QAirDocument document(QStringLiteral("; Stand\n[Begin Action 0]\n0,0, 0,0, 1\n\n[Begin Action 5]\n"));
    QAnimations& model = document.model;
    QCOMPARE(model.rowCount(), 2);
    QCOMPARE(model.data(model.index(0)).toString(), QStringLiteral("0 - Stand"));
    QCOMPARE(model.data(model.index(1)).toString(), QStringLiteral("5"));
    QVERIFY(!model.data(model.index(1), Qt::DecorationRole).isValid());

    QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
    QSignalSpy dataChanged(&model, &QAbstractItemModel::dataChanged);
    QTextCursor cursor(document.editor.document);
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(QStringLiteral("\n[Begin Action 3]"));
    QCOMPARE(inserted.count(), 1);
    QCOMPARE(inserted.first().at(1).toInt(), 2);
    model.at(1)->setNumber(6);
    QCOMPARE(document.editor.document->findBlockByNumber(4).text(), QStringLiteral("[Begin Action 6]"));
    QCOMPARE(model.data(model.index(1)).toString(), QStringLiteral("6"));
    QVERIFY(dataChanged.count() >= 1);
    model.at(1)->setName(QStringLiteral("Run"));
    QCOMPARE(model.data(model.index(1)).toString(), QStringLiteral("6 - Run"));
    model.remove(0);
    QCOMPARE(removed.count(), 1);
    QCOMPARE(model.rowCount(), 2);
}

void tst_Animations::projectFileAnswers()
{
    QDialogRecorder dialogs;
    QAirDocument comments(QStringLiteral("; only\n; comments\n"));
    QVERIFY(comments.model.isEmpty());
    QVERIFY(!comments.model.canSave(0x1010000));
    QCOMPARE(dialogs.calls.size(), 1);
    QCOMPARE(dialogs.calls.at(0).title, QStringLiteral("Save AIR"));
    QCOMPARE(dialogs.calls.at(0).text,
             QStringLiteral("You can't save an empty AIR because M.U.G.E.N. will not open it."));
    QCOMPARE(dialogs.calls.at(0).icon, QUserDialogs::Warning);

    QAirDocument document(action0 + QStringLiteral("0,0, 0,0, 1"));
    QVERIFY(document.model.canSave(0x1010000));
    QVERIFY(!document.model.isModified());
    QVERIFY(document.model.canDiscard());
    QCOMPARE(dialogs.calls.size(), 1);
    firstFrame(document)->setTime(3);
    QVERIFY(document.model.isModified());
    dialogs.answers.enqueue(QUserDialogs::No);
    QVERIFY(!document.model.canDiscard());
    QCOMPARE(dialogs.calls.last().title, QStringLiteral("Discard changes"));
    QCOMPARE(dialogs.calls.last().text,
             QStringLiteral("Do you really want to discard the changes made in the animations?"));
    QCOMPARE(dialogs.calls.last().buttons, QUserDialogs::Yes | QUserDialogs::No);
    QCOMPARE(dialogs.calls.last().defaultButton, QUserDialogs::No);
    dialogs.answers.enqueue(QUserDialogs::Yes);
    QVERIFY(document.model.canDiscard());
    QCOMPARE(document.model.fileType(), pftAnimations);
}

QTEST_MAIN(tst_Animations)
#include "tst_Animations.moc"

void tst_Animations::undoneBoxLinesKeepTheirBytes()
{
    // Lines in their authors' own spacing: deleting a box renumbers the one after it and the count, and
    // one undo gives every line back byte for byte, not in the model's spacing.
    const QString text = action0 + QStringLiteral("Clsn2:2\n Clsn2[0]= -10,-50,10,0\n  Clsn2[1] =1, 2 ,3,4\n"
                                                  "0,0, 0,0, 1\n");
    QAirDocument document(text);
    QAnimationFrame* frame = document.model.at(0)->frameAt(0);
    QCOMPARE(frame->hitBoxes(QCollisionBoxType::Collision)->boxes.size(), 2);
    frame->hitBoxes(QCollisionBoxType::Collision)->boxes.at(0)->remove();
    QCOMPARE(document.text(), action0 + QStringLiteral("Clsn2: 1\n  Clsn2[0] = 1, 2, 3, 4\n0,0, 0,0, 1\n"));
    document.editor.document->undo();
    QCOMPARE(document.text(), text);
    QCOMPARE(frame->hitBoxes(QCollisionBoxType::Collision)->boxes.size(), 2);
    QVERIFY(!document.editor.document->isUndoAvailable());
    QVERIFY(document.editor.document->isRedoAvailable());
}
