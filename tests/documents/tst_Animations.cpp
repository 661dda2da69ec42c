// The animation model on its text: reading and writing frame lines, which line is which element, how
// the model follows typing, and the operations of the model. The clipboard needs a GUI application.

#include "AnimationsTestSupport.h"
#include "QDialogRecorder.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QTest>
#include <QTextCursor>

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

    QTest::newRow("plain") << "1,2, 3,4, 5"
                           << "1,2 3,4 5"
                           << "1,2, 3,4, 5";
    QTest::newRow("additive with target") << "0,0, 0,0, 5, , AS200D100"
                                          << "0,0 0,0 5 A200/100"
                                          << "0,0, 0,0, 5, , AS200D100";
    QTest::newRow("every column") << "0,0, 0,0, -1, H, S, 2,3, 45"
                                  << "0,0 0,0 -1 f2 S s2x3 r45"
                                  << "0,0, 0,0, -1, H, S, 2,3, 45";
    QTest::newRow("both flips in any order") << "1,2, 3,4, 5, vh"
                                             << "1,2 3,4 5 f3"
                                             << "1,2, 3,4, 5, HV";
    QTest::newRow("A without blank") << "0,0, 0,0, 2, ,A"
                                     << "0,0 0,0 2 A256/256"
                                     << "0,0, 0,0, 2, , A";
    QTest::newRow("A1") << "0,0, 0,0, 2,, a1"
                        << "0,0 0,0 2 A256/128"
                        << "0,0, 0,0, 2, , A1";
    QTest::newRow("scale written as .5 reads 0.55") << "0,0,0,0,5,,,.5"
                                                    << "0,0 0,0 5 s0.55x1"
                                                    << "0,0, 0,0, 5, , , 0.55";
    QTest::newRow("scale Y alone") << "0,0,0,0,5,,,,2"
                                   << "0,0 0,0 5 s1x2"
                                   << "0,0, 0,0, 5, , ,,2";
    QTest::newRow("scale X and angle") << "0,0,0,0,5,,,2,,30"
                                       << "0,0 0,0 5 s2x1 r30"
                                       << "0,0, 0,0, 5, , , 2, , 30";
    QTest::newRow("flip and angle") << "0,0, 0,0, 5, H, , , , 30"
                                    << "0,0 0,0 5 f2 r30"
                                    << "0,0, 0,0, 5, H, ,, , 30";
    QTest::newRow("group beyond 16 bits reads 0") << "70000,0, 0,0, 5"
                                                  << "0,0 0,0 5"
                                                  << "0,0, 0,0, 5";
    QTest::newRow("unknown A word keeps the target") << "0,0, 0,0, 5, , AX9"
                                                     << "0,0 0,0 5 A"
                                                     << "0,0, 0,0, 5, , A";
    QTest::newRow("subtraction only") << "0,0, 0,0, 5, , s"
                                      << "0,0 0,0 5 S"
                                      << "0,0, 0,0, 5, , S";
    QTest::newRow("comment behind the line") << "-1,0, 0,0, 10 ; hold"
                                             << "-1,0 0,0 10"
                                             << "-1,0, 0,0, 10";
}

void tst_Animations::frameLines()
{
    QFETCH(QString, line);
    QFETCH(QString, values);
    QFETCH(QString, written);
    QAirDocument document(QStringLiteral("[Begin Action 0]\n") + line);
    QAnimationFrame* frame = firstFrame(document);
    QVERIFY(frame);
    QCOMPARE(describeFrame(frame), values);
    QCOMPARE(frame->text(), written);
    QCOMPARE(frame->lineText(), line);
}

void tst_Animations::frameSetters_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("field");
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("expected");

    QTest::newRow("time keeps the blend") << "0,0, 0,0, 5, , AS200D100"
                                          << "time" << 9.0 << "0,0, 0,0, 9, , AS200D100";
    QTest::newRow("scale Y only") << "0,0, 0,0, 5"
                                  << "scaleY" << 2.0 << "0,0, 0,0, 5, , ,,2";
    QTest::newRow("angle after scale X") << "0,0, 0,0, 5, , , 2"
                                         << "angle" << 30.0 << "0,0, 0,0, 5, , , 2, , 30";
    QTest::newRow("both flips") << "0,0, 0,0, 5"
                                << "flip" << 3.0 << "0,0, 0,0, 5, HV";
    QTest::newRow("vertical flip") << "0,0, 0,0, 5"
                                   << "flip" << 1.0 << "0,0, 0,0, 5, V";
    QTest::newRow("subtraction") << "0,0, 0,0, 5"
                                 << "blend" << 2.0 << "0,0, 0,0, 5, , S";
    QTest::newRow("addition") << "0,0, 0,0, 5, H"
                              << "blend" << 1.0 << "0,0, 0,0, 5, H, A";
    QTest::newRow("target 256/128") << "0,0, 0,0, 5, , A"
                                    << "target" << 128.0 << "0,0, 0,0, 5, , A1";
    QTest::newRow("target 256/64") << "0,0, 0,0, 5, , A"
                                   << "target" << 64.0 << "0,0, 0,0, 5, , AS256D64";
    QTest::newRow("scale back to 1 drops the tail") << "0,0, 0,0, 5, H, , 2"
                                                    << "scaleX" << 1.0 << "0,0, 0,0, 5, H";
    QTest::newRow("six digits") << "0,0, 0,0, 5"
                                << "scaleX" << 0.1234567 << "0,0, 0,0, 5, , , 0.123457";
    QTest::newRow("group") << "0,0, 0,0, 5"
                           << "group" << 200.0 << "200,0, 0,0, 5";
    QTest::newRow("offset") << "0,0, 0,0, 5"
                            << "y" << -12.0 << "0,0, 0,-12, 5";
    QTest::newRow("image") << "0,0, 0,0, 5"
                           << "index" << 3.0 << "0,3, 0,0, 5";
    QTest::newRow("offset x") << "0,0, 0,0, 5"
                              << "x" << 7.0 << "0,0, 7,0, 5";
    QTest::newRow("same value leaves the line") << "0,0,0,0,5"
                                                << "time" << 5.0 << "0,0,0,0,5";
}

void tst_Animations::frameSetters()
{
    QFETCH(QString, line);
    QFETCH(QString, field);
    QFETCH(double, value);
    QFETCH(QString, expected);
    QAirDocument document(QStringLiteral("[Begin Action 0]\n") + line);
    QAnimationFrame* frame = firstFrame(document);
    QVERIFY(frame);
    int updates = 0;
    QObject::connect(&document.editor, &QElementTextEditor::update,
                     [&updates](QElementTextEditor*, QList<QTextElementChange>&) { ++updates; });
    const int number = int(value);
    if (field == QLatin1String("time"))
        frame->setTime(number);
    else if (field == QLatin1String("scaleX"))
        frame->setScaleX(value);
    else if (field == QLatin1String("scaleY"))
        frame->setScaleY(value);
    else if (field == QLatin1String("angle"))
        frame->setAngle(value);
    else if (field == QLatin1String("flip"))
        frame->setFlip(number);
    else if (field == QLatin1String("blend"))
        frame->setBlend(QAnimationFrameBlend(number));
    else if (field == QLatin1String("target"))
        frame->setBlendTarget(QBlendTarget{256, ushort(number)});
    else if (field == QLatin1String("group"))
        frame->setSpriteGroup(number);
    else if (field == QLatin1String("y"))
        frame->setOffsetY(number);
    else if (field == QLatin1String("x"))
        frame->setOffsetX(number);
    else if (field == QLatin1String("index"))
        frame->setSpriteIndex(number);
    QCOMPARE(document.editor.document->lastBlock().text(), expected);
    // The setter wrote its own line: the document did not read it again.
    QCOMPARE(updates, 0);
    QCOMPARE(compareWithFresh(document), QString());
}

void tst_Animations::recognisers_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("type");

    QTest::newRow("box") << "  Clsn1[0] = 1, 2, 3, 4" << int(etCollisionBox);
    QTest::newRow("box of a default set, any case") << "clsn2default[3]=1,-2,3,4" << int(etCollisionBox);
    QTest::newRow("box with a token too many") << "Clsn1[0] = 1, 2, 3, 4 extra" << 0;
    QTest::newRow("box with three numbers") << "Clsn2[0] = 1, 2, 3" << 0;
    QTest::newRow("set") << "Clsn2: 5" << int(etCollisionBoxes);
    QTest::newRow("default set") << "clsn1default:0" << int(etCollisionBoxes);
    QTest::newRow("no such set") << "Clsn3: 1" << 0;
    QTest::newRow("set with a trailing word") << "Clsn2: 5 x" << 0;
    QTest::newRow("loop start") << "Loopstart" << int(etInterFrame);
    QTest::newRow("loop start with a word") << "LoopStart now" << 0;
    QTest::newRow("interpolation") << "interpolate OFFSET" << int(etInterFrame);
    QTest::newRow("interpolation of nothing known") << "Interpolate Colour" << 0;
    QTest::newRow("interpolation alone") << "Interpolate" << 0;
    QTest::newRow("action with trailing words") << "[Begin Action 10] junk" << int(etAnimation);
    QTest::newRow("negative action") << "[begin  ACTION -5]" << int(etAnimation);
    QTest::newRow("action without number") << "[Begin Action x]" << int(etUnknownGroup);
    QTest::newRow("frame") << "1,2,3,4,5" << int(etFrame);
    QTest::newRow("frame with four numbers") << "1,2,3,4" << 0;
    QTest::newRow("frame with a real time") << "1,2,3,4,5.5" << 0;
}

void tst_Animations::recognisers()
{
    QFETCH(QString, line);
    QFETCH(int, type);
    QAirDocument document(QStringLiteral("[Begin Action 0]\n") + line + QStringLiteral("\n0,0, 0,0, 1"));
    const QTextElement* element =
        QElementTextEditor::elementAt(document.editor.document->findBlockByNumber(1));
    QCOMPARE(element ? element->type() : 0, type);
}

void tst_Animations::structure_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("model");

    QTest::newRow("two Clsn1 sets: the nearer wins")
        << "[Begin Action 0]\nClsn1: 1\n Clsn1[0] = 1,1,2,2\nClsn1: 1\n Clsn1[0] = 5,5,6,6\n0,0, 0,0, 1"
        << "0: 0,0 0,0 1 C1(5,5,6,6)";
    QTest::newRow("default set, per-frame set and a mark")
        << "[Begin Action 0]\nClsn2Default: 1\n Clsn2[0] = 0,0,1,1\nClsn1: 1\n Clsn1[0] = "
           "2,2,3,3\nLoopStart\n"
           "0,0, 0,0, 1\n0,1, 0,0, 1"
        << "0: 0,0 0,0 1 M0 C1(2,2,3,3) C2D(0,0,1,1); 0,1 0,0 1";
    QTest::newRow("corners are ordered") << "[Begin Action 0]\nClsn2: 1\n  Clsn2[7] = 5, 6, 1, 2\n0,0, 0,0, 1"
                                         << "0: 0,0 0,0 1 C2(1,2,5,6)";
    QTest::newRow("counts and indices are not trusted")
        << "[Begin Action 0]\nClsn2: 7\n  Clsn2[4] = 1,1,2,2\n  Clsn2[4] = 3,3,4,4\n0,0, 0,0, 1"
        << "0: 0,0 0,0 1 C2(1,1,2,2 3,3,4,4)";
    QTest::newRow("frames outside actions")
        << "0,0, 0,0, 1\n[Begin Action 0]\n0,1, 0,0, 1\n[Other]\n0,2, 0,0, 1"
        << "0: 0,1 0,0 1";
    QTest::newRow("a mark above no frame is nobody's")
        << "[Begin Action 0]\n0,0,0,0,1\nLoopStart\n\n[Begin Action 1]\n0,0,0,0,2"
        << "0: 0,0 0,0 1\n1: 0,0 0,0 2";
    QTest::newRow("a mark ends the boxes of a set")
        << "[Begin Action 0]\nClsn1: 2\n Clsn1[0] = 1,1,2,2\nLoopStart\n Clsn1[1] = 3,3,4,4\n0,0,0,0,1"
        << "0: 0,0 0,0 1 M0 C1(1,1,2,2)";
    QTest::newRow("empty lines and comments do not part a frame from its sets")
        << "[Begin Action 0]\nClsn2: 1\n\n Clsn2[0] = 1,1,2,2\n; hit\n\n0,0,0,0,1"
        << "0: 0,0 0,0 1 C2(1,1,2,2)";
    QTest::newRow("names") << "; Stand\n[Begin Action 0]\n0,0,0,0,1\n\n;Walk\n\n[Begin Action 20]"
                           << "0 [Stand]: 0,0 0,0 1\n20 [Walk]: ";
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

void tst_Animations::typing_data()
{
    QTest::addColumn<QString>("marked");
    QTest::addColumn<QString>("insert");
    QTest::addColumn<QString>("model");
    QTest::addColumn<QString>("expectedText");

    QTest::newRow("joining two box lines loses both, the count follows")
        << "[Begin Action 0]\nClsn2: 2\n  Clsn2[0] = 1, 1, 2, 2|\n|  Clsn2[1] = 3, 3, 4, 4\n0,0, 0,0, 1"
        << ""
        << "0: 0,0 0,0 1 C2()"
        << "[Begin Action 0]\nClsn2: 0\n  Clsn2[0] = 1, 1, 2, 2  Clsn2[1] = 3, 3, 4, 4\n0,0, 0,0, 1";
    QTest::newRow("joining two frame lines") << "[Begin Action 0]\n0,0, 0,0, 1|\n|0,1, 0,0, 2"
                                             << ""
                                             << "0: 0,0 0,0 10 s0x0 r2"
                                             << "";
    QTest::newRow("deleting across sections")
        << "[Begin Action 0]\n0,0, 0,0, 1\n|0,1, 0,0, 1\n\n[Begin Action 1]\n1,0, 0,0, 1\n|1,1, 0,0, 1\n\n"
           "[Begin Action 2]\n2,0, 0,0, 1"
        << ""
        << "0: 0,0 0,0 1; 1,1 0,0 1\n2: 2,0 0,0 1"
        << "";
    QTest::newRow("a comment above a header becomes its name")
        << "[Begin Action 0]\n0,0, 0,0, 1\n|\n[Begin Action 1]\n1,0,0,0,1"
        << "; Jump"
        << "0: 0,0 0,0 1\n1 [Jump]: 1,0 0,0 1"
        << "";
    QTest::newRow("a frame line that stops parsing loses its frame")
        << "[Begin Action 0]\n0,0, 0,0, 1\n0,1, 0,0|, 1"
        << "x"
        << "0: 0,0 0,0 1"
        << "";
    QTest::newRow("a frame line that parses again comes back")
        << "[Begin Action 0]\n0,0, 0,0, 1\n0,1, 0,0|x|, 1"
        << ""
        << "0: 0,0 0,0 1; 0,1 0,0 1"
        << "";
    QTest::newRow("a lost frame hands its sets to the next frame")
        << "[Begin Action 0]\nClsn2: 1\n  Clsn2[0] = 1, 1, 2, 2\n|0,0, 0,0, 1|\n0,1, 0,0, 1"
        << ""
        << "0: 0,1 0,0 1 C2(1,1,2,2)"
        << "";
    QTest::newRow("deleting a box line renumbers the rest")
        << "[Begin Action 0]\nClsn2: 3\n  Clsn2[0] = 1, 1, 2, 2\n|  Clsn2[1] = 3, 3, 4, 4\n|"
           "  Clsn2[2] = 5, 5, 6, 6\n0,0, 0,0, 1"
        << ""
        << "0: 0,0 0,0 1 C2(1,1,2,2 5,5,6,6)"
        << "[Begin Action 0]\nClsn2: 2\n  Clsn2[0] = 1, 1, 2, 2\n  Clsn2[1] = 5, 5, 6, 6\n0,0, 0,0, 1";
    QTest::newRow("deleting the only box by typing leaves a count of 0")
        << "[Begin Action 0]\nClsn2: 1\n| Clsn2[0] = 1,1,2,2\n|0,0, 0,0, 1"
        << ""
        << "0: 0,0 0,0 1 C2()"
        << "[Begin Action 0]\nClsn2: 0\n0,0, 0,0, 1";
    QTest::newRow("a typed box line is numbered and counted")
        << "[Begin Action 0]\nClsn2: 1\n  Clsn2[0] = 1, 1, 2, 2|\n0,0, 0,0, 1"
        << "\nclsn2[0]=4,4,3,3"
        << "0: 0,0 0,0 1 C2(1,1,2,2 3,3,4,4)"
        << "[Begin Action 0]\nClsn2: 2\n  Clsn2[0] = 1, 1, 2, 2\n  Clsn2[1] = 3, 3, 4, 4\n0,0, 0,0, 1";
    QTest::newRow("a header typed between frames takes the frames below it")
        << "[Begin Action 0]\n0,0, 0,0, 1\n|0,1, 0,0, 1\nClsn2: 1\n  Clsn2[0] = 1, 1, 2, 2\n0,2, 0,0, 1"
        << "[Begin Action 5]\n"
        << "0: 0,0 0,0 1\n5: 0,1 0,0 1; 0,2 0,0 1 C2(1,1,2,2)"
        << "";
    QTest::newRow("removing a header hands its frames to the action above")
        << "[Begin Action 0]\n0,0, 0,0, 1\n|[Begin Action 5]\n|0,1, 0,0, 1"
        << ""
        << "0: 0,0 0,0 1; 0,1 0,0 1"
        << "";
    QTest::newRow("an unknown section leaves the frames below it without an action")
        << "[Begin Action 0]\n0,0, 0,0, 1\n|0,1, 0,0, 1"
        << "[Other]\n"
        << "0: 0,0 0,0 1"
        << "";
    QTest::newRow("Clsn1 changed to Clsn2 moves the set to its slot")
        << "[Begin Action 0]\nClsn|1|: 1\n  Clsn1[0] = 1, 1, 2, 2\n0,0, 0,0, 1"
        << "2"
        << "0: 0,0 0,0 1 C2(1,1,2,2)"
        << "";
    QTest::newRow("a nearer set typed above a frame takes the slot")
        << "[Begin Action 0]\nClsn1: 1\n  Clsn1[0] = 1, 1, 2, 2\n|0,0, 0,0, 1"
        << "Clsn1: 0\n"
        << "0: 0,0 0,0 1 C1()"
        << "";
    QTest::newRow("a frame typed between a set and its frame takes the set")
        << "[Begin Action 0]\nClsn1: 1\n  Clsn1[0] = 1, 1, 2, 2\n|0,0, 0,0, 1"
        << "0,9, 0,0, 1\n"
        << "0: 0,9 0,0 1 C1(1,1,2,2); 0,0 0,0 1"
        << "";
}

void tst_Animations::typing()
{
    QFETCH(QString, marked);
    QFETCH(QString, insert);
    QFETCH(QString, model);
    QFETCH(QString, expectedText);
    QString text;
    int from, to;
    unmark(marked, text, from, to);
    QAirDocument document(text);
    QTextCursor cursor(document.editor.document);
    cursor.setPosition(from);
    cursor.setPosition(to, QTextCursor::KeepAnchor);
    cursor.insertText(insert);

    QCOMPARE(describeModel(document.model), model);
    if (!expectedText.isEmpty()) QCOMPARE(document.text(), expectedText);
    QCOMPARE(checkInvariants(document.editor), QString());
    QCOMPARE(checkModel(document.model), QString());
    QCOMPARE(compareWithFresh(document), QString());
}

void tst_Animations::insertBox_data()
{
    QTest::addColumn<QString>("sets");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("expected");

    const QString c1 = QStringLiteral("Clsn1: 1\n  Clsn1[0] = 0, 0, 1, 1\n");
    const QString c2 = QStringLiteral("Clsn2: 1\n  Clsn2[0] = 0, 0, 1, 1\n");
    const QString c2d = QStringLiteral("Clsn2Default: 1\n  Clsn2[0] = 0, 0, 1, 1\n");
    QTest::newRow("first collision box")
        << "" << int(QCollisionBoxType::Collision) << "Clsn2: 1\n  Clsn2[0] = 1, 2, 3, 4\n";
    QTest::newRow("attack above collision")
        << c2 << int(QCollisionBoxType::Attack) << "Clsn1: 1\n  Clsn1[0] = 1, 2, 3, 4\n" + c2;
    QTest::newRow("collision below attack")
        << c1 << int(QCollisionBoxType::Collision) << c1 + "Clsn2: 1\n  Clsn2[0] = 1, 2, 3, 4\n";
    QTest::newRow("collision default above attack") << c1 + c2 << int(QCollisionBoxType::CollisionDefault)
                                                    << "Clsn2Default: 1\n  Clsn2[0] = 1, 2, 3, 4\n" + c1 + c2;
    QTest::newRow("attack default above collision default")
        << c2d << int(QCollisionBoxType::AttackDefault) << "Clsn1Default: 1\n  Clsn1[0] = 1, 2, 3, 4\n" + c2d;
    QTest::newRow("attack default above the per-frame sets")
        << c2 << int(QCollisionBoxType::AttackDefault) << "Clsn1Default: 1\n  Clsn1[0] = 1, 2, 3, 4\n" + c2;
    QTest::newRow("second box of a set") << c2 << int(QCollisionBoxType::Collision)
                                         << "Clsn2: 2\n  Clsn2[0] = 0, 0, 1, 1\n  Clsn2[1] = 1, 2, 3, 4\n";
}

void tst_Animations::insertBox()
{
    QFETCH(QString, sets);
    QFETCH(int, type);
    QFETCH(QString, expected);
    const QString head = QStringLiteral("[Begin Action 0]\n0,0, 0,0, 1\n");
    QAirDocument document(head + sets + QStringLiteral("0,1, 0,0, 1\n"));
    QAnimationFrame* frame = document.model.at(0)->frameAt(1);
    QVERIFY(frame);
    QSignalSpy updated(&document.editor, &QElementTextEditor::updated);
    QCollisionBox* box = frame->insertBox(QCollisionBoxType(type), QRect(QPoint(1, 2), QPoint(3, 4)));
    QVERIFY(box);
    QCOMPARE(document.text(), head + expected + QStringLiteral("0,1, 0,0, 1\n"));
    QCOMPARE(box->rect(), QRect(QPoint(1, 2), QPoint(3, 4)));
    QCOMPARE(frame->hitBoxes(QCollisionBoxType(type))->boxes.last(), box);
    // One edit: one updated signal, one undo step.
    QCOMPARE(updated.count(), 1);
    document.editor.document->undo();
    QCOMPARE(document.text(), head + sets + QStringLiteral("0,1, 0,0, 1\n"));
    QCOMPARE(compareWithFresh(document), QString());
}

void tst_Animations::boxesThroughTheModel()
{
    QAirDocument document(QStringLiteral("[Begin Action 0]\nClsn2: 2\n  Clsn2[0] = 1,1,2,2\n"
                                         "  Clsn2[1] = 3,3,4,4\nClsn1: 1\n Clsn1[0] = 5,5,6,6\n0,0, 0,0, 1"));
    QAnimationFrame* frame = firstFrame(document);
    QCollisionBoxes* collision = frame->hitBoxes(QCollisionBoxType::Collision);
    QCOMPARE(collision->boxes.size(), 2);

    // A box set through the model writes its own line, corners ordered.
    collision->boxes.at(1)->setRect(QRect(QPoint(9, 9), QPoint(7, 8)));
    QCOMPARE(collision->boxes.at(1)->lineText(), QStringLiteral("  Clsn2[1] = 7, 8, 9, 9"));

    // Removing the first box renumbers the other and the count.
    collision->boxes.at(0)->remove();
    QCOMPARE(document.text(), QStringLiteral("[Begin Action 0]\nClsn2: 1\n  Clsn2[0] = 7, 8, 9, 9\n"
                                             "Clsn1: 1\n Clsn1[0] = 5,5,6,6\n0,0, 0,0, 1"));
    // Removing the last box of a set through the model removes its declaration too.
    frame->hitBoxes(QCollisionBoxType::Attack)->boxes.at(0)->remove();
    QCOMPARE(document.text(),
             QStringLiteral("[Begin Action 0]\nClsn2: 1\n  Clsn2[0] = 7, 8, 9, 9\n0,0, 0,0, 1"));
    QVERIFY(!frame->hitBoxes(QCollisionBoxType::Attack));
    QCOMPARE(checkModel(document.model), QString());
    QCOMPARE(compareWithFresh(document), QString());
}

void tst_Animations::marksAndFrames()
{
    QAirDocument document(QStringLiteral("[Begin Action 0]\nClsn2: 1\n  Clsn2[0] = 1,1,2,2\n0,0, 0,0, 1\n\n"
                                         "[Begin Action 1]\n"));
    QAnimation* first = document.model.at(0);
    QAnimationFrame* frame = first->frameAt(0);
    frame->setInterFrame(QInterFrameElementType::LoopStart, true);
    frame->setInterFrame(QInterFrameElementType::InterpolateScale, true);
    frame->setInterFrame(QInterFrameElementType::LoopStart, true);
    QCOMPARE(document.text(), QStringLiteral("[Begin Action 0]\nInterpolate Scale\nLoopStart\nClsn2: 1\n"
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
    QAnimationFrame* lone = document.model.at(1)->frameAdd();
    QVERIFY(lone);
    QCOMPARE(document.text(), QStringLiteral("[Begin Action 0]\n-1,0, 0,0, 10\nInterpolate Scale\nClsn2: 1\n"
                                             "  Clsn2[0] = 1,1,2,2\n0,0, 0,0, 1\n-1,0, 0,0, 10\n\n"
                                             "[Begin Action 1]\n-1,0, 0,0, 10\n"));
    // Removing a frame removes its marks and boxes.
    frame->remove();
    QCOMPARE(document.text(), QStringLiteral("[Begin Action 0]\n-1,0, 0,0, 10\n-1,0, 0,0, 10\n\n"
                                             "[Begin Action 1]\n-1,0, 0,0, 10\n"));
    QCOMPARE(compareWithFresh(document), QString());
}

void tst_Animations::clsnTextRoundTrip()
{
    const QString clsn = QStringLiteral("Clsn2Default: 1\n  Clsn2[0] = -5, -60, 5, 0\nClsn1: 2\n"
                                        "  Clsn1[0] = 1, 2, 3, 4\n  Clsn1[1] = 5, 6, 7, 8");
    QAirDocument document(QStringLiteral("[Begin Action 0]\nLoopStart\n") + clsn +
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
    QTest::addColumn<QString>("operation");
    QTest::addColumn<QString>("expected");

    const QString text =
        QStringLiteral("; Stand\n[Begin Action 0]\n0,0, 0,0, 1\n\n; Walk\n[Begin Action 20]\n"
                       "20,0, 0,0, 1\n\n[Begin Action 10]\n10,0, 0,0, 1\n");
    QTest::newRow("add") << "add" << text + "\n[Begin Action 7]\n";
    QTest::newRow("insert") << "insert"
                            << "; Stand\n[Begin Action 0]\n0,0, 0,0, 1\n\n[Begin Action 7]\n\n; Walk\n"
                               "[Begin Action 20]\n20,0, 0,0, 1\n\n[Begin Action 10]\n10,0, 0,0, 1\n";
    QTest::newRow("remove") << "remove"
                            << "; Stand\n[Begin Action 0]\n0,0, 0,0, 1\n\n[Begin Action 10]\n10,0, 0,0, 1\n";
    QTest::newRow("move to the front")
        << "move"
        << "[Begin Action 10]\n10,0, 0,0, 1\n; Stand\n[Begin Action 0]\n0,0, 0,0, 1\n\n; Walk\n"
           "[Begin Action 20]\n20,0, 0,0, 1\n\n";
    QTest::newRow("duplicate") << "duplicate"
                               << "; Stand\n[Begin Action 0]\n0,0, 0,0, 1\n\n; Walk\n[Begin Action 20]\n"
                                  "20,0, 0,0, 1\n\n; Walk\n[Begin Action 21]\n20,0, 0,0, 1\n\n"
                                  "[Begin Action 10]\n10,0, 0,0, 1\n";
    QTest::newRow("organize") << "organize"
                              << "; Stand\n[Begin Action 0]\n0,0, 0,0, 1\n\n[Begin Action 10]\n10,0, 0,0, 1\n"
                                 "; Walk\n[Begin Action 20]\n20,0, 0,0, 1\n\n";
}

void tst_Animations::actionOperations()
{
    QFETCH(QString, operation);
    QFETCH(QString, expected);
    QAirDocument document(
        QStringLiteral("; Stand\n[Begin Action 0]\n0,0, 0,0, 1\n\n; Walk\n"
                       "[Begin Action 20]\n20,0, 0,0, 1\n\n[Begin Action 10]\n10,0, 0,0, 1\n"));
    QAnimations& model = document.model;
    QCOMPARE(model.findByName(0, QStringLiteral("Walk")), 1);
    QCOMPARE(model.findByName(0, QStringLiteral("10")), 2);
    QCOMPARE(model.findByNumber(1, 0), -1);
    QSignalSpy updated(&model, &QAnimations::updated);
    if (operation == QLatin1String("add")) {
        QCOMPARE(model.add(7)->number, 7);
    } else if (operation == QLatin1String("insert")) {
        QCOMPARE(model.insert(1, 7)->number, 7);
    } else if (operation == QLatin1String("remove")) {
        model.remove(1);
    } else if (operation == QLatin1String("move")) {
        model.move(2, 0);
    } else if (operation == QLatin1String("duplicate")) {
        model.duplicate(1, 21);
    } else if (operation == QLatin1String("organize")) {
        model.autoOrganize();
        QCOMPARE(updated.count(), 1);
    }
    QCOMPARE(document.text(), expected);
    QCOMPARE(checkModel(model), QString());
    QCOMPARE(compareWithFresh(document), QString());
    QVERIFY(model.isModified());
}

void tst_Animations::copyAndPaste()
{
    QAirDocument document(QStringLiteral("[Begin Action 0]\n0,0, 0,0, 1\n\n[Begin Action 1]\n1,0, 0,0, 1\n"));
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
    QCOMPARE(dialogs.calls.at(0).icon, QMessageBox::Warning);

    QAirDocument document(QStringLiteral("[Begin Action 0]\n0,0, 0,0, 1"));
    QVERIFY(document.model.canSave(0x1010000));
    QVERIFY(!document.model.isModified());
    QVERIFY(document.model.canDiscard());
    QCOMPARE(dialogs.calls.size(), 1);
    firstFrame(document)->setTime(3);
    QVERIFY(document.model.isModified());
    dialogs.answers.enqueue(QMessageBox::No);
    QVERIFY(!document.model.canDiscard());
    QCOMPARE(dialogs.calls.last().title, QStringLiteral("Discard changes"));
    QCOMPARE(dialogs.calls.last().text,
             QStringLiteral("Do you really want to discard the changes made in the animations?"));
    QCOMPARE(dialogs.calls.last().buttons, QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(dialogs.calls.last().defaultButton, QMessageBox::No);
    dialogs.answers.enqueue(QMessageBox::Yes);
    QVERIFY(document.model.canDiscard());
    QCOMPARE(document.model.fileType(), pftAnimations);
}

QTEST_MAIN(tst_Animations)
#include "tst_Animations.moc"
