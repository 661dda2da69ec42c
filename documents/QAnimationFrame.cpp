#include "QAnimationFrame.h"

#include "QAnimation.h"
#include "QAnimations.h"
#include "QCollisionBox.h"
#include "QCollisionBoxes.h"
#include "QElementTextEditor.h"
#include "QInterFrameElement.h"
#include "QTextElementPool.h"
#include "QTextElementType.h"
#include "QTextScanner.h"

#include <QRegularExpression>
#include <QTextCursor>

#include <tuple>

namespace {

// A token that stands for a column; the comment token of a line ending before a section is none.
const QTextToken* column(const QList<QTextToken*>& tokens, int index)
{
    if (index >= tokens.size()) return nullptr;
    const QTextToken* token = tokens.at(index);
    return token->kind == tkEndOfLine ? nullptr : token;
}

QString number(double value)
{
    return QString::number(value, 'g', 6);
}

// The value that a fresh reading of the written line gives, so that model and text never differ. Only
// real numbers can differ from what they are written as.
double asWritten(double value)
{
    return number(value).toDouble();
}

template <class T>
T asWritten(T value)
{
    return value;
}

} // namespace

int QAnimationFrame::type() const
{
    return etFrame;
}

int QAnimationFrame::firstLine() const
{
    const QTextElement* highest = this;
    for (const QTextElement* element = previous; element; element = element->previous) {
        if (!(element->type() & (etCollisionBoxes | etCollisionBox | etInterFrame))) break;
        highest = element;
    }
    return highest == this ? block.blockNumber() : highest->firstLine();
}

void QAnimationFrame::release()
{
    if (parent) parent->frames.removeOne(this);
    parent = nullptr;
    for (QCollisionBoxes*& set : boxes) {
        if (set && set->frame == this) set->frame = nullptr;
        set = nullptr;
    }
    for (QInterFrameElement* mark : std::as_const(interFrames))
        if (mark->frame == this) mark->frame = nullptr;
    interFrames.clear();
    spriteGroup = spriteIndex = offsetX = offsetY = time = flip = 0;
    blend = QAnimationFrameBlend::None;
    blendTarget = QBlendTarget();
    scaleX = scaleY = 1;
    angle = 0;
    QTextElementPool<QAnimationFrame>::release(this);
}

void QAnimationFrame::parse(const QList<QTextToken*>& tokens)
{
    spriteGroup = tokens.at(0)->text.toShort();
    spriteIndex = tokens.at(2)->text.toShort();
    offsetX = tokens.at(4)->text.toInt();
    offsetY = tokens.at(6)->text.toInt();
    time = tokens.at(8)->text.toInt();

    // Empty columns are commas in a row: the index walks over them.
    flip = 0;
    int i = 10;
    if (const QTextToken* token = column(tokens, 10); token && token->kind == tkIdentifier) {
        if (token->text.contains(QLatin1Char('v'), Qt::CaseInsensitive)) flip |= 1;
        if (token->text.contains(QLatin1Char('h'), Qt::CaseInsensitive)) flip |= 2;
        i = 11;
    }

    blend = QAnimationFrameBlend::None;
    ++i;
    if (const QTextToken* token = column(tokens, i); token && token->kind == tkIdentifier) {
        const QString& word = token->text;
        if (word.startsWith(QLatin1Char('a'), Qt::CaseInsensitive)) {
            blend = QAnimationFrameBlend::Addition;
            if (word.size() == 1) {
                blendTarget = QBlendTarget();
            } else if (word.size() == 2) {
                blendTarget = QBlendTarget{256, 128};
            } else {
                static const QRegularExpression pattern(QStringLiteral("^as(\\d{1,3})d(\\d{1,3})$"),
                                                        QRegularExpression::CaseInsensitiveOption);
                const QRegularExpressionMatch match = pattern.match(word);
                if (match.hasMatch())
                    blendTarget = QBlendTarget{match.captured(1).toUShort(), match.captured(2).toUShort()};
            }
        } else if (word.compare(QLatin1String("s"), Qt::CaseInsensitive) == 0) {
            blend = QAnimationFrameBlend::Subtraction;
        }
        ++i;
    }

    scaleX = scaleY = 1;
    ++i;
    if (const QTextToken* token = column(tokens, i)) {
        bool ok = false;
        const double value = token->text.toDouble(&ok);
        if (ok) {
            scaleX = value;
            ++i;
        }
    }
    ++i;
    if (const QTextToken* token = column(tokens, i)) {
        bool ok = false;
        const double value = token->text.toDouble(&ok);
        if (ok) {
            scaleY = value;
            ++i;
        }
    }

    angle = 0;
    ++i;
    if (const QTextToken* token = column(tokens, i)) angle = token->text.toDouble();
}

QString QAnimationFrame::text() const
{
    QString line = QStringLiteral("%1,%2, %3,%4, %5")
                       .arg(spriteGroup)
                       .arg(spriteIndex)
                       .arg(offsetX)
                       .arg(offsetY)
                       .arg(time);
    // Each column is written when it or anything to its right differs from its default.
    const bool angled = angle != 0;
    const bool scaledY = scaleY != 1;
    const bool scaledX = scaleX != 1;
    const bool blended = blend != QAnimationFrameBlend::None;
    switch (flip & 3) {
    case 1:
        line += QLatin1String(", V");
        break;
    case 2:
        line += QLatin1String(", H");
        break;
    case 3:
        line += QLatin1String(", HV");
        break;
    default:
        if (blended || scaledX || scaledY || angled) line += QLatin1String(", ");
        break;
    }
    switch (blend) {
    case QAnimationFrameBlend::Addition:
        if (blendTarget == QBlendTarget())
            line += QLatin1String(", A");
        else if (blendTarget == QBlendTarget{256, 128})
            line += QLatin1String(", A1");
        else
            line += QStringLiteral(", AS%1D%2")
                        .arg(qint16(blendTarget.source))
                        .arg(qint16(blendTarget.destination));
        break;
    case QAnimationFrameBlend::Subtraction:
        line += QLatin1String(", S");
        break;
    default:
        if (scaledX || scaledY || angled) line += QLatin1String(", ");
        break;
    }
    if (scaledX)
        line += QLatin1String(", ") + number(scaleX);
    else if (scaledY || angled)
        line += QLatin1Char(',');
    if (scaledY)
        line += QLatin1Char(',') + number(scaleY);
    else if (angled)
        line += QLatin1String(", ");
    if (angled) line += QLatin1String(", ") + number(angle);
    return line;
}

QString QAnimationFrame::newFrameText()
{
    return QStringLiteral("-1,0, 0,0, 10");
}

void QAnimationFrame::setValues(int group, int index, int x, int y, int ticks, int flipBits,
                                QAnimationFrameBlend blendMode, QBlendTarget target, double scaleXValue,
                                double scaleYValue, double angleValue)
{
    const auto wanted =
        std::make_tuple(group, index, x, y, ticks, flipBits, blendMode, target, asWritten(scaleXValue),
                        asWritten(scaleYValue), asWritten(angleValue));
    auto stored = std::tie(spriteGroup, spriteIndex, offsetX, offsetY, time, flip, blend, blendTarget, scaleX,
                           scaleY, angle);
    if (stored == wanted) return;
    stored = wanted;
    write();
}

template <class T>
void QAnimationFrame::setField(T QAnimationFrame::*field, T value)
{
    value = asWritten(value);
    if (this->*field == value) return;
    this->*field = value;
    write();
}

// The kinds of field that the setters store.
template void QAnimationFrame::setField(int QAnimationFrame::*, int);
template void QAnimationFrame::setField(double QAnimationFrame::*, double);
template void QAnimationFrame::setField(QAnimationFrameBlend QAnimationFrame::*, QAnimationFrameBlend);
template void QAnimationFrame::setField(QBlendTarget QAnimationFrame::*, QBlendTarget);

void QAnimationFrame::write()
{
    // A number that the line cannot hold exactly is kept as the line says it, so that the model
    // never differs from a fresh reading of its text.
    scaleX = asWritten(scaleX);
    scaleY = asWritten(scaleY);
    angle = asWritten(angle);
    if (!editor) return;
    setLine(text());
    if (QAnimations* model = QAnimations::modelOf(editor)) model->elementWritten(this);
}

QInterFrameElement* QAnimationFrame::interFrame(QInterFrameElementType markType) const
{
    for (QInterFrameElement* mark : interFrames)
        if (mark->markType == markType) return mark;
    return nullptr;
}

void QAnimationFrame::setInterFrame(QInterFrameElementType markType, bool on)
{
    if (!editor) return;
    QInterFrameElement* mark = interFrame(markType);
    if (on && !mark)
        editor->insertLineBefore(this, QInterFrameElement::textOf(markType), false);
    else if (!on && mark)
        mark->remove(true);
}

QCollisionBox* QAnimationFrame::insertBox(QCollisionBoxType boxType, const QRect& rect)
{
    if (!editor) return nullptr;
    QElementTextEditor* owner = editor;
    owner->beginEdit();
    QCollisionBoxes* set = hitBoxes(boxType);
    if (!set) {
        // The declaration goes where the order default sets, Clsn1, Clsn2, frame line is kept.
        QCollisionBoxes* const attack = hitBoxes(QCollisionBoxType::Attack);
        QCollisionBoxes* const collision = hitBoxes(QCollisionBoxType::Collision);
        QCollisionBoxes* const collisionDefault = hitBoxes(QCollisionBoxType::CollisionDefault);
        QTextElement* below = this;
        switch (boxType) {
        case QCollisionBoxType::Attack:
            if (collision) below = collision;
            break;
        case QCollisionBoxType::Collision:
            break;
        case QCollisionBoxType::AttackDefault:
            if (collisionDefault)
                below = collisionDefault;
            else if (attack)
                below = attack;
            else if (collision)
                below = collision;
            break;
        case QCollisionBoxType::CollisionDefault:
            if (attack)
                below = attack;
            else if (collision)
                below = collision;
            break;
        }
        owner->insertLineBefore(below, QCollisionBoxes::declarationText(boxType, 0), true);
        set = hitBoxes(boxType);
    }
    QCollisionBox* box = set ? set->insert(rect) : nullptr;
    owner->endEdit();
    return box;
}

QString QAnimationFrame::clsnText() const
{
    if (!editor) return QString();
    const QTextElement* highest = nullptr;
    const QTextElement* nearest = nullptr;
    for (const QTextElement* element = previous; element; element = element->previous) {
        if (!element->valid) continue;
        const int kind = element->type();
        if (kind == etFrame || (element->flags() & etSection)) break;
        if (kind == etCollisionBoxes) {
            highest = element;
            if (!nearest) nearest = element;
        } else if (kind == etCollisionBox && !nearest) {
            nearest = element;
        }
    }
    if (!highest) return QString();
    QTextCursor cursor(editor->document);
    cursor.setPosition(highest->block.position());
    cursor.setPosition(nearest->block.position() + nearest->block.length() - 1, QTextCursor::KeepAnchor);
    return cursor.selectedText().replace(QChar::ParagraphSeparator, QLatin1Char('\n')).trimmed();
}

namespace {

QList<QTextToken> lineTokens(const QString& line)
{
    QList<QTextToken> tokens;
    QTextScanner scanner(line);
    for (int kind = scanner.next(); kind != tkEnd && kind != tkEndOfLine; kind = scanner.next())
        tokens.append(QTextToken{kind, scanner.tokenColumn(), scanner.text()});
    return tokens;
}

} // namespace

void QAnimationFrame::importClsnText(const QString& text)
{
    if (!editor) return;
    QElementTextEditor* owner = editor;
    owner->beginEdit();
    const QStringList lines = text.split(QLatin1Char('\n'));
    int at = 0;
    auto nextLine = [&lines, &at]() {
        while (at < lines.size()) {
            const QList<QTextToken> tokens = lineTokens(lines.at(at++));
            if (!tokens.isEmpty()) return tokens;
        }
        return QList<QTextToken>();
    };
    for (QList<QTextToken> tokens = nextLine(); !tokens.isEmpty(); tokens = nextLine()) {
        const QTextToken& word = tokens.first();
        if (word.kind != tkIdentifier || !word.text.startsWith(QLatin1String("clsn"), Qt::CaseInsensitive))
            break;
        int boxType = 0;
        if (word.text.startsWith(QLatin1String("clsn2"), Qt::CaseInsensitive)) boxType |= 1;
        if (word.text.endsWith(QLatin1String("default"), Qt::CaseInsensitive)) boxType |= 2;
        int count = 0;
        for (int i = 1; i < tokens.size(); ++i) {
            if (tokens.at(i).kind == tkColon) continue;
            if (tokens.at(i).kind == tkInteger) count = tokens.at(i).text.toInt();
            break;
        }
        for (int n = 0; n < count; ++n) {
            const QList<QTextToken> box = nextLine();
            if (box.isEmpty()) break;
            // An empty QRect's corners stand in for numbers that are missing.
            const QRect empty;
            int values[4] = {empty.left(), empty.top(), empty.right(), empty.bottom()};
            int found = 0;
            bool afterEqual = false;
            for (const QTextToken& token : box) {
                if (!afterEqual) {
                    afterEqual = token.kind == tkEqual;
                    continue;
                }
                if (token.kind == tkComma) continue;
                if (token.kind != tkInteger || found == 4) break;
                values[found++] = token.text.toInt();
            }
            insertBox(QCollisionBoxType(boxType),
                      QRect(QPoint(values[0], values[1]), QPoint(values[2], values[3])));
        }
    }
    owner->endEdit();
}
