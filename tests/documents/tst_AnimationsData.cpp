// The animation model on the real AIR files of the test data: every file loads, the model counts what
// an independent reading of the raw text counts, an untouched file saves to the same bytes, and a long
// seeded run of random edits keeps text, elements and model in step after every step.

#include "AnimationsTestSupport.h"
#include "FileBytes.h"
#include "QNullSyntaxProcessor.h"
#include "QSyntaxProcessorFactory.h"
#include "TestData.h"

#include <QColor>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>
#include <QTextCursor>

namespace {

struct Counts
{
    int actions = 0;
    int frames = 0;
    int boxes = 0;
};

// Counts with rules of its own, line by line: lines that fit none of the forms are invisible, a set's
// boxes are the box lines right below it, a frame takes the nearest set of each kind above it, and a
// frame counts only in an action's section.
Counts countRaw(const QString& text)
{
    const auto options = QRegularExpression::CaseInsensitiveOption;
    static const QRegularExpression action(QStringLiteral("^\\s*\\[\\s*begin\\s+action\\s+-?\\d+\\s*\\]"),
                                           options);
    static const QRegularExpression section(QStringLiteral("^\\s*\\["));
    static const QRegularExpression frame(
        QStringLiteral("^\\s*-?\\d+\\s*,\\s*-?\\d+\\s*,\\s*-?\\d+\\s*,\\s*-?\\d+\\s*,\\s*-?\\d+(?![\\d.])"));
    static const QRegularExpression set(QStringLiteral("^\\s*clsn([12])(default)?\\s*:\\s*\\d+\\s*(;.*)?$"),
                                        options);
    static const QRegularExpression box(
        QStringLiteral("^\\s*clsn\\w*\\s*\\[\\s*-?\\d+\\s*\\]\\s*=(\\s*-?\\d+\\s*,){3}\\s*-?\\d+\\s*(;.*)?$"),
        options);
    static const QRegularExpression mark(
        QStringLiteral("^\\s*(loopstart|interpolate\\s+(blend|offset|scale|angle))\\s*(;.*)?$"), options);

    Counts counts;
    bool inAction = false;
    // The sets above the frame to come, as (kind, boxes), and whether a box line may join the last.
    QList<QPair<QString, int>> run;
    bool boxesOpen = false;
    for (const QString& line : text.split(QLatin1Char('\n'))) {
        if (action.match(line).hasMatch()) {
            ++counts.actions;
            inAction = true;
            run.clear();
            boxesOpen = false;
        } else if (section.match(line).hasMatch()) {
            inAction = false;
            run.clear();
            boxesOpen = false;
        } else if (frame.match(line).hasMatch()) {
            if (inAction) {
                ++counts.frames;
                QSet<QString> seen;
                for (int i = int(run.size()) - 1; i >= 0; --i)
                    if (!seen.contains(run.at(i).first)) {
                        seen.insert(run.at(i).first);
                        counts.boxes += run.at(i).second;
                    }
            }
            run.clear();
            boxesOpen = false;
        } else if (const QRegularExpressionMatch found = set.match(line); found.hasMatch()) {
            run.append({found.captured(1) + found.captured(2).toLower(), 0});
            boxesOpen = true;
        } else if (box.match(line).hasMatch()) {
            if (boxesOpen) ++run.last().second;
        } else if (mark.match(line).hasMatch()) {
            boxesOpen = false;
        }
    }
    return counts;
}

Counts countModel(const QAnimations& model)
{
    Counts counts;
    counts.actions = model.count();
    for (const QAnimation* animation : model.animations) {
        counts.frames += animation->frameCount();
        for (const QAnimationFrame* frame : animation->frames)
            for (const QCollisionBoxes* set : frame->boxes)
                if (set) counts.boxes += int(set->boxes.size());
    }
    return counts;
}

} // namespace

class tst_AnimationsData : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { registerTextElements(); }
    void cleanupTestCase() { unregisterTextElements(); }

    void independentCount_data();
    void independentCount();
    void realFiles_data();
    void realFiles();
    void loadReadsOnce();
    void randomEdits_data();
    void randomEdits();
};

void tst_AnimationsData::independentCount_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("actions");
    QTest::addColumn<int>("frames");
    QTest::addColumn<int>("boxes");
    QTest::newRow("sets, nearer wins") << "[Begin Action 1]\nClsn2: 1\n Clsn2[0]=1,2,3,4\nClsn2: 1\n"
                                          " Clsn2[0] = 1,2,3,4\n Clsn2[1] = 1,2,3,4\n1,1,1,1,1\n1,1,1,1,1"
                                       << 1 << 2 << 2;
    QTest::newRow("frames outside actions") << "1,1,1,1,1\n[Foo]\n1,1,1,1,1" << 0 << 0 << 0;
}

// The counter of the raw text, tried on small texts whose answers are known.
void tst_AnimationsData::independentCount()
{
    QFETCH(QString, text);
    QFETCH(int, actions);
    QFETCH(int, frames);
    QFETCH(int, boxes);
    const Counts counts = countRaw(text);
    QCOMPARE(counts.actions, actions);
    QCOMPARE(counts.frames, frames);
    QCOMPARE(counts.boxes, boxes);
    QAirDocument document(text);
    const Counts model = countModel(document.model);
    QCOMPARE(model.actions, actions);
    QCOMPARE(model.frames, frames);
    QCOMPARE(model.boxes, boxes);
}

void tst_AnimationsData::realFiles_data()
{
    QTest::addColumn<QString>("path");
    TAVREL_REQUIRE_TESTDATA();
    const QStringList files = TestData::files({QStringLiteral("*.air"), QStringLiteral("*.AIR")});
    if (files.isEmpty()) QSKIP("the test data holds no AIR file");
    for (const QString& path : files)
        QTest::newRow(qPrintable(QDir(TestData::root()).relativeFilePath(path))) << path;
}

void tst_AnimationsData::realFiles()
{
    QFETCH(QString, path);
    QAirDocument document;
    QVERIFY(document.model.fromFile(path));
    QVERIFY(!document.model.isEmpty());
    QVERIFY(!document.model.isModified());
    QCOMPARE(checkInvariants(document.editor), QString());
    QCOMPARE(checkModel(document.model), QString());

    const Counts raw = countRaw(document.text());
    const Counts model = countModel(document.model);
    QCOMPARE(model.actions, raw.actions);
    QCOMPARE(model.frames, raw.frames);
    QCOMPARE(model.boxes, raw.boxes);

    // A load reads the text top down; the same text pasted is read by following each change.
    QAirDocument pasted;
    pasted.model.rewriteOnLoad = false;
    QTextCursor(pasted.editor.document).insertText(document.text());
    QCOMPARE(describeModel(pasted.model), describeModel(document.model));

    QTemporaryDir dir;
    const QString copy = dir.filePath(QFileInfo(path).fileName());
    QVERIFY(document.model.toFile(copy));
    QCOMPARE(readBytes(copy), readBytes(path));
}

// A processor that colours every line and counts the lines it read.
class QCountingProcessor : public QNullSyntaxProcessor
{
public:
    using QNullSyntaxProcessor::QNullSyntaxProcessor;
    static inline int lines = 0;

protected:
    void highlightBlock(const QString& text) override
    {
        QNullSyntaxProcessor::highlightBlock(text);
        setFormat(0, int(text.size()), QColor(Qt::red));
        ++lines;
    }
};

// Loading colours every line once and reads it into the model once, also when the file replaces text
// that was coloured before.
void tst_AnimationsData::loadReadsOnce()
{
    TAVREL_REQUIRE_TESTDATA();
    const QStringList files = TestData::files({QStringLiteral("*.air")});
    if (files.isEmpty()) QSKIP("the test data holds no AIR file");
    QSyntaxProcessorFactory::install([](int type, QTextDocument* document, quint32) -> QSyntaxProcessor* {
        return new QCountingProcessor(document, type);
    });
    QAirDocument document;
    int passes = 0;
    connect(&document.editor, &QElementTextEditor::update, this,
            [&passes](QElementTextEditor*, QList<QTextElementChange>&) { ++passes; });
    for (int load = 0; load < 2; ++load) {
        QCountingProcessor::lines = 0;
        passes = 0;
        QVERIFY(document.model.fromFile(files.first()));
        // Every line once, and the one empty line that the document holds while it is cleared.
        const int lines = document.editor.document->blockCount();
        QVERIFY2(
            QCountingProcessor::lines >= lines && QCountingProcessor::lines <= lines + 1,
            qPrintable(QStringLiteral("%1 lines coloured for %2").arg(QCountingProcessor::lines).arg(lines)));
        QCOMPARE(passes, 1);
    }
    QSyntaxProcessorFactory::install(nullptr);
}

void tst_AnimationsData::randomEdits_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<quint32>("seed");
    TAVREL_REQUIRE_TESTDATA();
    QStringList files = TestData::files({QStringLiteral("*.air")});
    if (files.isEmpty()) QSKIP("the test data holds no AIR file");
    // Each step compares with a fresh reading of the whole text: a few files of different shapes.
    QStringList picked;
    for (const QString& name : {QStringLiteral("kfm.air"), QStringLiteral("Training.air"),
                                QStringLiteral("gofx.air"), QStringLiteral("fightfx.air")})
        for (const QString& file : std::as_const(files))
            if (QFileInfo(file).fileName() == name && !picked.contains(file)) {
                picked << file;
                break;
            }
    if (picked.isEmpty()) picked << files.first();
    for (const QString& path : std::as_const(picked))
        for (quint32 seed : {3u, 77u})
            QTest::newRow(qPrintable(QStringLiteral("%1 seed %2").arg(QFileInfo(path).fileName()).arg(seed)))
                << path << seed;
}

void tst_AnimationsData::randomEdits()
{
    QFETCH(QString, path);
    QFETCH(quint32, seed);
    QRandomGenerator random(seed);
    QAirDocument document;
    QVERIFY(document.model.fromFile(path));
    QAnimations& model = document.model;
    QTextDocument* text = document.editor.document;

    const QStringList pieces = {QStringLiteral("1"),     QStringLiteral("-"),   QStringLiteral(","),
                                QStringLiteral(" "),     QStringLiteral("\n"),  QStringLiteral("H"),
                                QStringLiteral("A"),     QStringLiteral("S"),   QStringLiteral(";"),
                                QStringLiteral("Clsn2"), QStringLiteral("["),   QStringLiteral("x"),
                                QStringLiteral("\n\n"),  QStringLiteral("5, "), QStringLiteral(":")};
    const QStringList lines = {QStringLiteral("0,%1, 0,0, 5"),
                               QStringLiteral("Clsn2: %1"),
                               QStringLiteral("  Clsn2[0] = %1, -2, 3, 4"),
                               QStringLiteral("Clsn1Default: 1"),
                               QStringLiteral("LoopStart"),
                               QStringLiteral("[Begin Action %1]"),
                               QStringLiteral("; name %1"),
                               QString(),
                               QStringLiteral("[Statedef %1]"),
                               QStringLiteral("Interpolate Blend"),
                               QStringLiteral("1,%1, 0,0, 3, H, AS20D30, 2")};
    auto randomLine = [&]() {
        const QString line = lines.at(int(random.bounded(int(lines.size()))));
        return line.contains(QLatin1String("%1")) ? line.arg(random.bounded(40)) : line;
    };
    auto randomFrame = [&]() -> QAnimationFrame* {
        if (model.count() == 0) return nullptr;
        QAnimation* animation = model.at(random.bounded(model.count()));
        return animation->frames.isEmpty() ? nullptr
                                           : animation->frameAt(random.bounded(animation->frameCount()));
    };

    const int steps = text->blockCount() > 1000 ? 120 : 250;
    for (int step = 0; step < steps; ++step) {
        const int length = text->characterCount() - 1;
        QTextCursor cursor(text);
        cursor.setPosition(int(random.bounded(length + 1)));
        QString action;
        switch (random.bounded(12)) {
        case 0:
        case 1:
        case 2:
            action = QStringLiteral("type");
            cursor.insertText(pieces.at(int(random.bounded(int(pieces.size())))));
            break;
        case 3:
            action = QStringLiteral("delete");
            cursor.setPosition(qMin(length, cursor.position() + int(random.bounded(80)) + 1),
                               QTextCursor::KeepAnchor);
            cursor.removeSelectedText();
            break;
        case 4: {
            action = QStringLiteral("paste");
            QStringList paste;
            for (int n = int(random.bounded(4)); n >= 0; --n)
                paste << randomLine();
            cursor.movePosition(QTextCursor::StartOfBlock);
            cursor.insertText(paste.join(QLatin1Char('\n')) + QLatin1Char('\n'));
            break;
        }
        case 5:
            action = QStringLiteral("undo");
            text->undo();
            break;
        case 6: {
            action = QStringLiteral("frame setter");
            if (QAnimationFrame* frame = randomFrame()) {
                switch (random.bounded(6)) {
                case 0:
                    frame->setTime(int(random.bounded(20)) - 1);
                    break;
                case 1:
                    frame->setFlip(int(random.bounded(4)));
                    break;
                case 2:
                    frame->setBlend(QAnimationFrameBlend(random.bounded(3)));
                    frame->setBlendTarget(
                        QBlendTarget{ushort(random.bounded(257)), ushort(random.bounded(257))});
                    break;
                case 3:
                    frame->setScaleX(random.bounded(30) / 7.0);
                    break;
                case 4:
                    frame->setScaleY(random.bounded(3) == 0 ? 1.0 : random.bounded(30) / 9.0);
                    frame->setAngle(random.bounded(2) ? 0.0 : random.bounded(360.0));
                    break;
                default:
                    frame->setSpriteGroup(int(random.bounded(3000)));
                    frame->setOffsetX(int(random.bounded(200)) - 100);
                    break;
                }
            }
            break;
        }
        case 7: {
            action = QStringLiteral("boxes");
            if (QAnimationFrame* frame = randomFrame()) {
                const auto type = QCollisionBoxType(random.bounded(4));
                QCollisionBoxes* set = frame->hitBoxes(type);
                const QRect rect(QPoint(int(random.bounded(50)), -int(random.bounded(50))),
                                 QPoint(int(random.bounded(50)), int(random.bounded(5))));
                if (set && !set->boxes.isEmpty() && random.bounded(2))
                    set->boxes.at(random.bounded(int(set->boxes.size())))->remove();
                else if (set && !set->boxes.isEmpty() && random.bounded(2))
                    set->boxes.first()->setRect(rect);
                else
                    frame->insertBox(type, rect);
            }
            break;
        }
        case 8: {
            action = QStringLiteral("marks and frames");
            if (QAnimationFrame* frame = randomFrame()) {
                const auto type = QInterFrameElementType(random.bounded(5));
                if (random.bounded(3))
                    frame->setInterFrame(type, !frame->checkInterFrame(type));
                else if (random.bounded(2))
                    frame->parent->frameInsert(random.bounded(uint(frame->parent->frameCount() + 1)));
                else
                    frame->remove();
            }
            break;
        }
        case 9: {
            action = QStringLiteral("actions");
            const uint index = model.count() ? random.bounded(uint(model.count())) : 0;
            switch (random.bounded(5)) {
            case 0:
                model.insert(index, int(random.bounded(100)));
                break;
            case 1:
                model.remove(index);
                break;
            case 2:
                model.move(int(index), random.bounded(uint(qMax(1, model.count()))));
                break;
            case 3:
                model.duplicate(index, random.bounded(100));
                break;
            default:
                if (QAnimation* animation = model.at(index)) animation->setNumber(int(random.bounded(100)));
                break;
            }
            break;
        }
        case 10:
            action = QStringLiteral("clsn text");
            if (QAnimationFrame* from = randomFrame())
                if (QAnimationFrame* to = randomFrame()) to->importClsnText(from->clsnText());
            break;
        default:
            action = QStringLiteral("redo");
            text->redo();
            break;
        }
        const QString where = QStringLiteral("step %1 (%2): ").arg(step).arg(action);
        const QString invariants = checkInvariants(document.editor);
        if (!invariants.isEmpty()) QFAIL(qPrintable(where + invariants));
        const QString links = checkModel(model);
        if (!links.isEmpty()) QFAIL(qPrintable(where + links));
        const QString fresh = compareWithFresh(document);
        if (!fresh.isEmpty()) QFAIL(qPrintable(where + fresh));
    }
}

QTEST_GUILESS_MAIN(tst_AnimationsData)
#include "tst_AnimationsData.moc"
