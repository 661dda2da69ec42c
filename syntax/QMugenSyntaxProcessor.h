#pragma once

#include "QMugenBlockState.h"
#include "QMugenSyntaxHierarchy.h"
#include "QMugenToken.h"
#include "QSyntaxProcessor.h"

#include <QMap>
#include <QString>

class QMugenSyntaxProperties;
struct QMugenController;
struct QMugenParamInfo;

// The checker and colourer of all M.U.G.E.N. text: DEF, AIR, CMD, CNS, ST, stage, storyboard, system,
// fight FX and font definitions. One parser knows the sections of all those files; what a line means
// follows only from the section it stands in, which the block state carries from line to line. The
// words of controllers, parameters and triggers come from the vocabulary; the section names, the AIR,
// CMD and StateDef grammars and the expression grammar are built in.
//
// Each block is parsed on its own, in place over its characters: a header or type line writes the
// block state, every other line inherits it, so Qt stops re-highlighting as soon as a block ends in the
// state it had before.
//
// The parser is kept readable by giving each of its stages a file of its own: QMugenSyntaxProcessorLexer,
// ...Headers, ...Lines, ...Values and ...Expressions; the block, the findings and the fold level are in
// QMugenSyntaxProcessor.cpp.
class QMugenSyntaxProcessor : public QSyntaxProcessor
{
    Q_OBJECT
public:
    // The block states of the sections the vocabulary names, above those of the font definition types
    // (250 to 998): a section of free text lines, and a screen, 1000 plus its place in the screen list.
    enum ScreenState
    {
        TextSectionState = 999,
        ScreenSectionState = 1000
    };

    QMugenSyntaxProcessor(QTextDocument* document, QMugenSyntaxProperties* properties, bool checking = true);
    ~QMugenSyntaxProcessor() override;

    QSyntaxHierarchy* hierarchy() override { return &m_hierarchy; }

protected:
    void highlightBlock(const QString& text) override;
    void refreshVersion() override;

private:
    // Lexer.
    void next();
    QStringView tokenText() const { return QStringView(m_buffer, m_bufferLength); }
    const QString& lowerTokenText();
    bool tokenIs(const char* word) const;
    void appendText(QChar c);
    void skipToEnd();

    // Reporting.
    void error(int start, int end, const QString& text);
    void errorAtToken(const QString& text);
    void warning(int start, int end, const QString& text);
    void notice(int start, int end, const QString& text);
    bool expect(int kind, int slot = -1);
    void setSlot(int start, int length, int slot);
    void underlineMessages();

    // Headers and type lines.
    void sectionHeader(int previousState);
    void namedHeader(const QString& word);
    void typeLine(int previousState);

    // Lines of the sections.
    void sectionLine(int previousState);
    bool namedLine(bool known, const QString& unknownText);
    void remapLine();
    void defaultsLine();
    void commandLine();
    void stateDefLine();
    void quotesLine();
    void actionLine();
    void infoLine();
    void keymapLine();
    void triggerLine();
    void backgroundLine();
    void bgControlLine(int state);
    void controllerLine(const QMugenController* controller);

    // Parameters and values.
    void parameter(const QMap<QString, QMugenParamInfo>& group, const QString& label);
    const QMugenParamInfo* matchName(const QMap<QString, QMugenParamInfo>& map, const QString& lowerName,
                                     int* spanEnd);
    void readValue(const QMugenParamInfo& info);
    void commandKeys();
    bool commandElement();
    bool readInt();
    bool readNumber();
    bool readExpression();
    void shortfall(int count);
    void identifierValue(const QMugenParamInfo& info);
    bool matchesValue(const QString& pattern, const QString& value) const;

    // Expressions.
    void expression();
    void logical();
    void bitwise();
    void equality();
    void relation();
    void sum();
    void product();
    void unary();
    void trigger();
    void triggerValue(const QMugenParamInfo& info);
    void triggerConstant(const QString& lowerName);
    void comparison();
    void signedInt();
    void abandonNesting();

    // Folding.
    void computeFoldLevel(QTextEditorBlockData* data, const QString& text, bool isHeader);

    QMugenSyntaxProperties* m_vocabulary;
    QMugenSyntaxHierarchy m_hierarchy;

    // Scan state of the block in hand.
    const QChar* m_text = nullptr;
    int m_length = 0;
    int m_pos = 0;
    int m_endColumn = 0;
    int m_lastEnd = 0;
    bool m_atEnd = false;
    bool m_expressionMode = false;
    bool m_letterRun = true;
    QMugenToken m_token;
    // Where the current token really begins: the packed word cuts columns beyond its field.
    int m_tokenPos = 0;
    QChar m_buffer[513];
    int m_bufferLength = 0;
    QString m_lower;

    int m_state = 0;
    int m_messageMark = 0;
    int m_valueStart = 0;

    // The last forward look of folding: blocks from `from` up to `to` lead to the same answer, for as long
    // as the document stays at that revision. Without it a long run of blank or comment lines would cost
    // a walk over the rest of the run for each of its lines.
    struct LookAhead
    {
        int revision = -1;
        int from = 0;
        int to = -1;
        bool preSection = false;
        bool nextIsState = false;
    };
    LookAhead m_look;

    // Nesting of the expression in hand, and where it went too deep: from there on the line is only read
    // to its end, and no finding but that one is reported for it.
    int m_nesting = 0;
    bool m_tooDeep = false;
    int m_tooDeepStart = 0;
    int m_tooDeepEnd = 0;
};
