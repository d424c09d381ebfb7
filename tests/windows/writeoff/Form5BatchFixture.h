#pragma once

#include "windows/writeoff/Form5Fixture.h"

namespace pontrel::test {

inline const QString BatchQuestion = QStringLiteral("警告訊息|是否確定執行註銷批次 ?");

/// The batch's tab in front, two people and three reasons in the store.
class BatchFixture : public Form5Fixture {
  public:
    BatchFixture() { addPeople(); }
    void openBatch() {
        open(Batch);
        press(QStringLiteral("CmdBat(0)"));
    }
    /// Yes to the question.
    void run() {
        answers.expectMsgBox(MsgAnswer::Yes);
        press(QStringLiteral("CmdBat(1)"));
    }
    void doubleClickEntry(const QString& list, int row) {
        auto& entries = at<QListWidget>(list);
        clickEntry(list, row);
        QTest::mouseDClick(entries.viewport(), Qt::LeftButton, Qt::NoModifier,
                           entries.visualItemRect(entries.item(row)).center());
    }
    /// What is on, and the panels that tell of an edit.
    [[nodiscard]] QString state() const {
        const auto joined = [](const QList<int>& numbers) {
            QStringList texts;
            for (const int number : numbers)
                texts << QString::number(number);
            return texts.join(u' ');
        };
        return QStringLiteral("frame %1, tabs %2, buttons %3, panel 2 '%4', panel 8 %5")
            .arg(at(QStringLiteral("Frame1(1)")).isEnabled() ? QStringLiteral("on") : QStringLiteral("off"),
                 joined(tabsOn()), joined(buttonsOn(QStringLiteral("CmdBat"))), panel(2),
                 panel8Raised() ? QStringLiteral("raised") : QStringLiteral("sunken"));
    }
    /// Codes and names of the four reasons.
    [[nodiscard]] QString reasons() const {
        QStringList all;
        for (int reason = 0; reason < 4; ++reason)
            all << text(QStringLiteral("Text8(%1)").arg(reason)) +
                       label(QStringLiteral("Label40(%1)").arg(reason));
        return all.join(u'|');
    }
};

} // namespace pontrel::test
