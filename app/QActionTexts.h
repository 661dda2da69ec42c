#pragma once

#include <QCoreApplication>
#include <QString>

// The menu text and the tool tip of every action, by text id. A text id is the row of the action in
// this table; QActionManager looks the texts up again at every retranslation, so a language change
// reaches every menu without the editors doing anything.
class QActionTexts
{
    Q_DECLARE_TR_FUNCTIONS(QActionTexts)
public:
    static constexpr unsigned Unknown = ~0u;

    static unsigned count();
    // The text id of an action name, or Unknown.
    static unsigned id(const QString& name);
    // The action name of a row; empty past the end.
    static QString name(unsigned id);
    // The translated menu text (with its "&" mnemonic) and tool tip; empty past the end.
    static QString text(unsigned id);
    static QString toolTip(unsigned id);

private:
    struct Row
    {
        const char* name;
        const char* text;
        const char* toolTip;
    };
    static const Row* table(unsigned& count);
    static const Row* row(unsigned id);
};
