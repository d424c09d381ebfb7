#pragma once

#include "rules/attendance/Opening.h"
#include "windows/ModuleFixture.h"
#include "windows/leave/NoteTyping.h"

#include <QComboBox>

#include <variant>

namespace pontrel::test {

// How an exception is answered.

/// By a leave note of the day, the times as four digits.
struct ByLeave {
    QString begin, end;
};
/// By reasons for the four swipes, empty where there is none, as an entry of its own or in a batch.
struct ByWriteOff {
    QStringList reasons;
    bool inBatch = false;
};
/// By another slot of the day, or none for a rest.
struct ByRoster {
    QString TimeNo;
};
/// By a further punch file of the day, which has what the first one has and more.
struct ByLatePunches {
    QString punches;
};

/// An exception, what answers it, and what it comes to. Rows are told as fieldsOf() reads them.
struct ExceptionKind {
    Fields slot;     ///< In what its slot A differs from that of addSlot().
    QString punches; ///< Of the day, "07:55 17:03".
    QString before;  ///< Its row of the exceptions, which is that of the results.
    std::variant<ByLeave, ByWriteOff, ByRoster, ByLatePunches> answer;
    std::optional<QString> after{};          ///< Its row of the results; none where there is none.
    QString slotAfter = QStringLiteral("A"); ///< That of this row.
    Fields otherSlot{};                      ///< In what slot B differs, for a change of the roster.
};

/// A slot with that many swipes, of which those are required.
[[nodiscard]] inline Fields swipes(int CardType, const QString& required) {
    Fields fields{{u"CardType", CardType}};
    for (int position = 1; position <= 4; ++position)
        fields.append({QStringLiteral("StdC%1").arg(position), required.contains(QString::number(position))});
    return fields;
}

/// A clerk's way with one exception through the windows of the program, from the punch file on. Beside the
/// employee of the exception stands another one, whose one punch is long before his time and who stays in the
/// list.
class ExceptionFixture : public ModuleFixture {
  public:
    /// From the reading of the punches to the list without the exception. Fails where anything else comes.
    void drive(const ExceptionKind& kind) {
        prepare(kind);
        read(kind.punches, false);
        QCOMPARE(answers.trouble(), QString());
        verifyBefore(kind);
        if (QTest::currentTestFailed())
            return;
        std::visit([&](const auto& answer) { give(kind, answer); }, kind.answer);
        QCOMPARE(answers.trouble(), QString());
        if (!QTest::currentTestFailed())
            verifyAfter(kind);
    }

  private:
    inline static const QDate Day{2001, 3, 5};
    inline static const QString Places = QStringLiteral("900305");
    inline static const QString EmpNo = QStringLiteral("10001");
    inline static const QString Other = QStringLiteral("10002");

    void prepare(const ExceptionKind& kind) {
        clock::setSource([] { return QDateTime(Day.addDays(1), QTime(9, 30)); });
        addSlot(database(), QStringLiteral("A"), kind.slot);
        if (!kind.otherSlot.isEmpty())
            addSlot(database(), QStringLiteral("B"), kind.otherSlot);
        addSlot(database(), QStringLiteral("Z"));
        addEmployee(database(), EmpNo, {{u"EmpName", u"王小明"}});
        addEmployee(database(), Other, {{u"EmpName", u"陳美惠"}});
        addRoster(database(), EmpNo, Day, QStringLiteral("A"));
        addRoster(database(), Other, Day, QStringLiteral("Z"));
        insertRow(database(), QStringLiteral("Holi01"), {{u"HoliNo", u"03"}, {u"HoliType", u"事假"}});
        insertRow(database(), QStringLiteral("Canc01"), {{u"CnlNo", u"01"}, {u"CnlName", u"忘記刷卡"}});
        openModule(3);
    }

    // In the attendance window, on the tab of the exceptions afterwards.

    /// Reads a file of these punches, in place of what has been read of the day where that is so.
    void read(const QString& punches, bool again) {
        QByteArray lines = punchLine(Other.toLatin1(), Day, QTime(5, 0));
        for (const QString& time : punches.split(u' ', Qt::SkipEmptyParts))
            lines += punchLine(EmpNo.toLatin1(), Day, QTime::fromString(time, Qt::ISODate));
        const QString name = Day.toString(QStringLiteral("yyyyMMdd")) + QStringLiteral(".txt");
        clickTab(0);
        answers.expectFile(store.writePunchFile(name, lines));
        if (again)
            answers.expectMsgBox(MsgAnswer::Yes);
        answers.expectMsgBox();
        press(QStringLiteral("CtrlCmd0(0)"));
        clickTab(2);
    }
    void recalculate() {
        expectDate(Places);
        answers.expectMsgBox();
        press(QStringLiteral("CmdCtrl(5)"));
    }

    // Each leads from there to the window of the answer and back, and works the day out anew.

    void give(const ExceptionKind&, const ByLeave& leave) {
        press(QStringLiteral("CmdCtrl(0)"));
        press(QStringLiteral("CtrlCmd2(0)"));
        fillNote(*this, {EmpNo, QStringLiteral("03"), Places, leave.begin, Places, leave.end});
        press(QStringLiteral("CtrlCmd2(4)"));
        QCOMPARE(rowsOf(*store.connect(), QStringLiteral("Holi03")).size(), 1);
        press(QStringLiteral("CtrlCmd2(13)"));
        recalculate();
    }
    void give(const ExceptionKind&, const ByWriteOff& writeOff) {
        press(QStringLiteral("CmdCtrl(1)"));
        writeOff.inBatch ? writeOffInBatch(writeOff.reasons) : enterWriteOff(writeOff.reasons);
        QCOMPARE(rowsOf(*store.connect(), QStringLiteral("Canc02")).size(), 1);
        press(writeOff.inBatch ? QStringLiteral("CmdBat(3)") : QStringLiteral("CtrlCmd2(13)"));
        recalculate();
    }
    void give(const ExceptionKind& kind, const ByRoster& roster) {
        press(QStringLiteral("StbTool(8)"));
        OpenToolWindow(2);
        clickTab(2);
        type(QStringLiteral("Mk2(4)"), Places);
        typeSlot(8, QStringLiteral("A"));
        press(QStringLiteral("Command2"));
        clickEntry(QStringLiteral("List1"), 0);
        press(QStringLiteral("CMDCTRL(0)"));
        if (!roster.TimeNo.isEmpty()) {
            press(QStringLiteral("Option1(1)"));
            typeSlot(10, roster.TimeNo);
        }
        press(QStringLiteral("Command3"));
        press(QStringLiteral("StbTool(8)"));
        OpenToolWindow(3);
        clickTab(2);
        readAgain(kind, kind.punches);
    }
    void give(const ExceptionKind& kind, const ByLatePunches& late) { readAgain(kind, late.punches); }

    void enterWriteOff(const QStringList& reasons) {
        clickTab(2);
        press(QStringLiteral("CtrlCmd2(0)"));
        typeDate(1, Places);
        type(QStringLiteral("Text5(0)"), EmpNo);
        typeReasons(QStringLiteral("Text5(%1)"), 1, reasons);
        press(QStringLiteral("CtrlCmd2(4)"));
    }
    void writeOffInBatch(const QStringList& reasons) {
        press(QStringLiteral("CmdBat(0)"));
        typeDate(0, Places);
        typeReasons(QStringLiteral("Text8(%1)"), 0, reasons);
        clickEntry(QStringLiteral("List1"), 0);
        press(QStringLiteral("CMDCTRL(0)"));
        answers.expectMsgBox(MsgAnswer::Yes);
        press(QStringLiteral("CmdBat(1)"));
    }
    void typeReasons(const QString& box, int first, const QStringList& reasons) {
        for (qsizetype swipe = 0; swipe < reasons.size(); ++swipe) {
            if (!reasons.at(swipe).isEmpty())
                type(box.arg(first + swipe), reasons.at(swipe));
        }
    }
    void typeSlot(int combo, const QString& TimeNo) {
        typeInto(*at<QComboBox>(QStringLiteral("Combo2(%1)").arg(combo)).lineEdit(), TimeNo);
    }
    /// Punches are given to the swipes of a slot when they are read, and a recalculation alone does not do so
    /// again.
    void readAgain(const ExceptionKind& kind, const QString& punches) {
        recalculate();
        verifyBefore(kind);
        read(punches, true);
    }

    void verifyBefore(const ExceptionKind& kind) {
        const QStringList rows{dailyRow(EmpNo, Day, QStringLiteral("A"), fieldsOf(kind.before)), otherRow()};
        QCOMPARE(rowsOf(*store.connect(), QStringLiteral("Atte03")), rows);
        QCOMPARE(rowsOf(*store.connect(), QStringLiteral("Atte02")), rows);
        QCOMPARE(listed(), QStringList({EmpNo, Other}));
    }
    void verifyAfter(const ExceptionKind& kind) {
        QStringList results{otherRow()};
        if (kind.after)
            results.prepend(dailyRow(EmpNo, Day, kind.slotAfter, fieldsOf(*kind.after)));
        QCOMPARE(rowsOf(*store.connect(), QStringLiteral("Atte03")), QStringList{otherRow()});
        QCOMPARE(rowsOf(*store.connect(), QStringLiteral("Atte02")), results);
        QCOMPARE(listed(), QStringList{Other});
    }
    [[nodiscard]] static QString otherRow() {
        return dailyRow(Other, Day, QStringLiteral("Z"),
                        fieldsOf(QStringLiteral("F1 F2 F3 F4 Expt T1=05:00")));
    }
    /// The codes of the list of exceptions.
    [[nodiscard]] QStringList listed() const {
        QStringList codes;
        for (const QString& row : shown(QStringLiteral("TDBG3(0)")))
            codes << row.section(u'|', 1, 1);
        return codes;
    }
};

} // namespace pontrel::test
