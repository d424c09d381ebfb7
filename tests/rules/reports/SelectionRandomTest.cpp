#include "rules/reports/SelectedRows.h"
#include "support/Builders.h"
#include "support/TestStore.h"

#include <QTest>

#include <memory>
#include <optional>
#include <random>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

/// A record as a formula sees it: a row of Atte02 and the employee's, which may be missing.
struct Record {
    QString EmpNo;
    QDate UseDate;
    bool F1 = false;
    int DelayF = 0;
    bool known = false;
    Value UnitNo, Birth, SickHD;
};

/// A part of a formula: how it is written, and what it comes to for a record, null included.
struct Part {
    QString text;
    std::function<Value(const Record&)> value;
};

int compareValues(const Value& left, const Value& right) {
    if (left.type() == ColumnType::Text) {
        // ASCII letters fold, nothing else; order is that of the UTF-8 bytes.
        const auto folded = [](const Value& value) {
            QByteArray bytes = value.toText().toUtf8();
            for (char& byte : bytes)
                byte = byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + 32) : byte;
            return bytes;
        };
        return folded(left).compare(folded(right));
    }
    const auto order = [](auto a, auto b) { return a < b ? -1 : a > b ? 1 : 0; };
    if (left.type() == ColumnType::Date)
        return order(left.toDate(), right.toDate());
    if (left.type() == ColumnType::Boolean)
        return order(left.toBoolean(), right.toBoolean());
    return order(left.toReal(), right.toReal());
}

/// Makes formulas at random, each with its meaning.
class Maker {
  public:
    explicit Maker(unsigned seed) : random_(seed) {}

    int below(int end) { return static_cast<int>(random_() % static_cast<unsigned>(end)); }

    Part disjunction(int depth) { return chain(depth, u"or", true); }

    QString randomCode() {
        static const QStringList codes{u""_s,      u"1"_s,  u"0001"_s, u"00010"_s, u"a300"_s, u"A300"_s,
                                       u"A300 "_s, u"zz"_s, u"Z"_s,    u"王"_s,    u"_"_s};
        return codes[below(static_cast<int>(codes.size()))];
    }
    QDate randomDay() { return QDate(2001, 1 + below(4), 1 + below(28)); }

  private:
    Part chain(int depth, QStringView word, bool any) {
        const auto part = [&] { return any ? chain(depth, u"and", false) : negation(depth); };
        Part left = part();
        for (int more = below(4) - 1; more > 0; --more) {
            const Part right = part();
            left = {left.text + blank() + anyCase(word) + blank() + right.text,
                    [left, right, any](const Record& record) {
                        const bool a = left.value(record).toBoolean();
                        const bool b = right.value(record).toBoolean();
                        return Value(any ? a || b : a && b);
                    }};
        }
        return left;
    }

    Part negation(int depth) {
        const Part part = condition(depth);
        if (below(4) > 0)
            return part;
        return {anyCase(u"not") + blank() + part.text,
                [part](const Record& record) { return Value(!part.value(record).toBoolean()); }};
    }

    /// True or false for every record: a comparison with a null is false.
    Part condition(int depth) {
        switch (below(depth > 0 ? 8 : 6)) {
        case 0: {
            const Part boolean = booleanOperand(depth);
            return {boolean.text, [boolean](const Record& record) {
                        const Value value = boolean.value(record);
                        return Value(!value.isNull() && value.toBoolean());
                    }};
        }
        case 1:
            return compared(booleanOperand(depth), booleanOperand(depth));
        case 2:
            return compared(text(), text());
        case 3:
            return compared(day(), day());
        case 4:
        case 5:
            return compared(number(), number());
        default: {
            const Part inner = disjunction(depth - 1);
            return {u"("_s + maybeBlank() + inner.text + u")"_s, inner.value};
        }
        }
    }

    Part compared(const Part& left, const Part& right) {
        static const QStringList signs{u"="_s, u"<>"_s, u"<"_s, u"<="_s, u">"_s, u">="_s};
        const int sign = below(6);
        return {left.text + maybeBlank() + signs[sign] + maybeBlank() + right.text,
                [left, right, sign](const Record& record) {
                    const Value a = left.value(record);
                    const Value b = right.value(record);
                    if (a.isNull() || b.isNull())
                        return Value(false);
                    const int order = compareValues(a, b);
                    const std::array met{order == 0, order != 0, order<0, order <= 0, order> 0, order >= 0};
                    return Value(met.at(static_cast<std::size_t>(sign)));
                }};
    }

    Part booleanOperand(int depth) {
        switch (below(depth > 0 ? 5 : 4)) {
        case 0:
            return {field(u"Atte02.F1"), [](const Record& record) { return Value(record.F1); }};
        case 1: {
            const bool word = below(2) == 0;
            return {anyCase(word ? u"true" : u"false"), [word](const Record&) { return Value(word); }};
        }
        case 2:
        case 3: {
            const Part tested = anyOperand();
            return {anyCase(u"isnull") + maybeBlank() + u"("_s + tested.text + u")"_s,
                    [tested](const Record& record) { return Value(tested.value(record).isNull()); }};
        }
        default: {
            const Part inner = disjunction(depth - 1);
            return {u"("_s + inner.text + u")"_s, inner.value};
        }
        }
    }

    Part anyOperand() {
        switch (below(3)) {
        case 0:
            return text();
        case 1:
            return day();
        default:
            return number();
        }
    }

    Part text() {
        switch (below(3)) {
        case 0:
            return {field(u"Atte02.EmpNo"), [](const Record& record) { return Value(record.EmpNo); }};
        case 1:
            return {field(u"Base06.UnitNo"), [](const Record& record) { return record.UnitNo; }};
        default: {
            const QString code = randomCode();
            return {u"'"_s + code + u"'"_s, [code](const Record&) { return Value(code); }};
        }
        }
    }

    Part day() {
        switch (below(4)) {
        case 0:
            return {field(u"Atte02.UseDate"), [](const Record& record) { return Value(record.UseDate); }};
        case 1:
            return {field(u"Base06.Birth"), [](const Record& record) { return record.Birth; }};
        case 2:
            return {u"date(0,0,0)"_s, [](const Record&) { return Value(); }};
        default: {
            const QDate date = randomDay();
            return {anyCase(u"date") + u"(%1,%2,%3)"_s.arg(date.year()).arg(date.month()).arg(date.day()),
                    [date](const Record&) { return Value(date); }};
        }
        }
    }

    Part number() {
        switch (below(4)) {
        case 0:
            return {field(u"Atte02.DelayF"), [](const Record& record) { return Value(record.DelayF); }};
        case 1:
            return {field(u"Base06.SickHD"), [](const Record& record) { return record.SickHD; }};
        case 2: {
            const Part date = day();
            return {anyCase(u"month") + u"("_s + date.text + u")"_s, [date](const Record& record) {
                        const Value value = date.value(record);
                        return value.isNull() ? Value() : Value(value.toDate().month());
                    }};
        }
        default: {
            const int half = below(12) - 2;
            return {half % 2 == 0 ? QString::number(half / 2) : QString::number(half / 2.0, 'f', 1),
                    [half](const Record&) { return Value(half / 2.0); }};
        }
        }
    }

    QString blank() { return u" "_s.repeated(1 + below(2)); }
    QString maybeBlank() { return u" "_s.repeated(below(2)); }
    QString anyCase(QStringView word) { return below(3) > 0 ? word.toString() : word.toString().toUpper(); }
    QString field(QStringView name) { return u"{"_s + anyCase(name) + u"}"_s; }

    std::mt19937 random_;
};

} // namespace

/// The rows that formulas made at random select, compared with what a plain reading of them tells of each.
class SelectionRandomTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void formulas_data();
    void formulas();
};

void SelectionRandomTest::formulas_data() {
    QTest::addColumn<unsigned>("seed");
    for (unsigned seed = 1; seed <= 8; ++seed)
        QTest::addRow("store %u", seed) << seed;
}

void SelectionRandomTest::formulas() {
    QFETCH(unsigned, seed);
    Maker maker(seed);
    TestStore store;
    std::vector<Record> records;
    for (int number = 0; number < 40; ++number) {
        Record record;
        record.EmpNo = u"%1%2"_s.arg(maker.randomCode()).arg(number);
        record.UseDate = maker.randomDay();
        record.F1 = maker.below(2) == 0;
        record.DelayF = maker.below(5);
        record.known = maker.below(5) > 0;
        if (record.known) {
            record.UnitNo = maker.below(4) == 0 ? Value() : Value(maker.randomCode());
            record.Birth = maker.below(4) == 0 ? Value() : Value(maker.randomDay());
            record.SickHD = maker.below(4) == 0 ? Value() : Value(maker.below(10) / 2.0);
            addEmployee(store.database(), record.EmpNo,
                        {{u"UnitNo", record.UnitNo}, {u"Birth", record.Birth}, {u"SickHD", record.SickHD}});
        }
        insertRow(store.database(), u"Atte02"_s,
                  {{u"EmpNo", record.EmpNo},
                   {u"UseDate", record.UseDate},
                   {u"TimeNo", u"A"},
                   {u"F1", record.F1},
                   {u"DelayF", record.DelayF}});
        records.push_back(record);
    }
    int some = 0;
    for (int round = 0; round < 250; ++round) {
        const Part formula = maker.disjunction(3);
        QStringList expected;
        for (const Record& record : records)
            if (formula.value(record).toBoolean())
                expected += record.EmpNo;
        if (selectedRows(store.path(), u"Atte02"_s, u"EmpNo"_s, formula.text) != expected)
            QFAIL(qPrintable(formula.text));
        some += !expected.isEmpty() && expected.size() < 40;
    }
    // Most of the formulas tell records apart.
    QVERIFY2(some > 80, qPrintable(QString::number(some)));
}

QTEST_GUILESS_MAIN(SelectionRandomTest)
#include "SelectionRandomTest.moc"
