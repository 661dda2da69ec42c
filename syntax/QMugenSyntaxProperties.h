#pragma once

#include "QMugenController.h"
#include "QMugenParamInfo.h"
#include "QSyntaxProperties.h"

#include <QList>
#include <QMap>
#include <QStringList>

class QXmlParser;

// The vocabulary of M.U.G.E.N. text, read from syntax_mugen.xml: which controllers, parameters, triggers
// and named constants exist, and from which engine version on and until which one. The checker only reads
// it; a new engine version is a change of the data file.
class QMugenSyntaxProperties : public QSyntaxProperties
{
public:
    // The parameter groups of the sections with fixed keys, in the order of their element names.
    enum Group
    {
        Files,
        Arcade,
        Data,
        Size,
        Velocity,
        Movement,
        Camera,
        PlayerInfo,
        Bound,
        Scaling,
        StageInfo,
        Shadow,
        Reflection,
        Music,
        BGDef,
        BGCtrlDef,
        Fnt,
        SceneDef,
        Scene,
        GroupCount
    };

    QMugenSyntaxProperties() = default;
    QMugenSyntaxProperties(const QMugenSyntaxProperties&) = delete;
    QMugenSyntaxProperties& operator=(const QMugenSyntaxProperties&) = delete;
    ~QMugenSyntaxProperties() override;

    bool load(const QString& path) override;
    void clear();

    // The four controller lists, in file order: [State] types, [BG] types, [BGCtrl] types, [Def] types.
    const QList<QMugenController*>& stateControllers() const { return m_stateControllers; }
    const QList<QMugenController*>& bgControllers() const { return m_bgControllers; }
    const QList<QMugenController*>& bgControls() const { return m_bgControls; }
    const QList<QMugenController*>& fntDefs() const { return m_fntDefs; }
    // The screen sections, by their name as written between the brackets ("Title Info"), in file order.
    const QList<QMugenController*>& screens() const { return m_screens; }
    // The sections whose lines are free text, not keys ("Characters" of a select definition).
    const QStringList& textSections() const { return m_textSections; }

    const QMap<QString, QMugenParamInfo>& group(int group) const { return m_groups[group]; }
    const QMap<QString, QMugenParamInfo>& triggers() const { return m_triggers; }
    // Trigger name in lower case to its named constants.
    const QMap<QString, QStringList>& constants() const { return m_constants; }

    // Every plainly named word of the vocabulary, once, sorted without regard to case: the words the code
    // editor offers for completion.
    QStringList completionWords() const;

    // The element name of a group in the file, and the label its messages show.
    static QString groupElement(int group);
    static QString groupLabel(int group);

    // The kind named by a type attribute, on parameters and on triggers; MugenUnchecked for any other text.
    static int paramType(const QString& text);
    static int triggerType(const QString& text);

private:
    static QMugenParamInfo readParam(const QXmlParser& xml, bool trigger);
    static QMugenController* readController(QXmlParser& xml);
    static void putController(QList<QMugenController*>& list, QMugenController* controller);

    QList<QMugenController*> m_stateControllers;
    QList<QMugenController*> m_bgControllers;
    QList<QMugenController*> m_bgControls;
    QList<QMugenController*> m_fntDefs;
    QList<QMugenController*> m_screens;
    QStringList m_textSections;
    QMap<QString, QMugenParamInfo> m_groups[GroupCount];
    QMap<QString, QMugenParamInfo> m_triggers;
    QMap<QString, QStringList> m_constants;
};
