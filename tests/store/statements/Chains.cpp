#include "store/statements/Chains.h"

#include "store/RunTimeError.h"
#include "store/Schema.h"
#include "store/statement/Parser.h"
#include "store/statement/Writer.h"

namespace pontrel::test {

using namespace Qt::StringLiterals;

namespace {

QString many(const QString& piece, int times) {
    return piece.repeated(times);
}

/// A chain of one piece between two texts.
Chain chain(const char* title, const QString& head, const QString& piece, const QString& tail = {},
            Way way = Way::Select, bool allowed = true) {
    return {title, [=](int times) { return head + many(piece, times) + tail; }, way, allowed};
}

/// A chain that opens and closes as often, around a text.
Chain nested(const char* title, const QString& head, const QString& opening, const QString& middle,
             const QString& closing, const QString& tail = {}) {
    return {title,
            [=](int times) { return head + many(opening, times) + middle + many(closing, times) + tail; }};
}

const QString Where = u"Select EmpNo From Base06 Where "_s;
const QString AsNumber = u" as a From Syst01"_s;

std::vector<Chain> operatorChains() {
    std::vector<Chain> chains;
    struct Form {
        const char* title;
        const char16_t* piece;
    };
    // Behind a column, in a statement and as it is typed into a search.
    for (const Form& form : {Form{"patterns", u" like 'x'"},
                             {"patterns that are not met", u" not like 'x'"},
                             {"ranges", u" between '1' and '2'"},
                             {"ranges left out", u" not between '1' and '2'"},
                             {"tests for null", u" is null"},
                             {"tests for a value", u" is not null"},
                             {"comparisons", u" = '1'"},
                             {"comparisons with a boolean", u" = True"},
                             {"comparisons with null", u" <> null"},
                             {"alternatives", u" = '1' or EmpNo"},
                             {"conditions", u" = '1' and EmpNo"},
                             {"joined texts", u" & 'a'"}}) {
        const QString piece = QString::fromUtf16(form.piece);
        chains.push_back(chain(form.title, Where + u"EmpNo"_s, piece, u" = '1'"_s));
        chains.push_back(chain(form.title, u"EmpNo"_s, piece, u" = '1'"_s, Way::Find));
    }
    for (const Form& form : {Form{"sums", u"+1"},
                             {"differences", u"-1"},
                             {"products", u"*2"},
                             {"quotients", u"/2"},
                             {"whole quotients", u"\\2"},
                             {"remainders", u" mod 2"},
                             {"sums of signs", u"+ - 1"}}) {
        const QString piece = QString::fromUtf16(form.piece);
        chains.push_back(chain(form.title, u"Select 1"_s, piece, AsNumber));
        chains.push_back(chain(form.title, u"Update Syst01 Set HoliMin = 1"_s, piece, {}, Way::Execute));
    }
    chains.push_back(chain("patterns within patterns", Where + u"EmpNo"_s, u" like EmpName"_s));
    chains.push_back(chain("patterns of sums", Where + u"BreakY"_s, u" like '1' + 1"_s));
    chains.push_back(chain("ranges of sums", Where + u"BreakY"_s, u" between 1 and 2 + 1"_s));
    for (Chain& each : chains)
        each.deepens = true;
    // These cancel each other out.
    chains.push_back(chain("contraries", Where, u"not "_s, u"EmpNo = '1'"_s));
    chains.push_back(chain("contraries of a search", {}, u"not "_s, u"EmpNo = '1'"_s, Way::Find));
    chains.push_back(chain("signs", u"Select "_s, u"- "_s, u"1"_s + AsNumber));
    return chains;
}

std::vector<Chain> nestedChains() {
    std::vector<Chain> chains{
        nested("brackets around a condition", Where, u"("_s, u"EmpNo = '1'"_s, u")"_s),
        chain("brackets opened", Where, u"("_s, {}, Way::Select, false),
        nested("contraries in brackets", Where, u"not("_s, u"EmpNo = '1'"_s, u")"_s),
        nested("signs in brackets", u"Select "_s, u"-("_s, u"1"_s, u")"_s, AsNumber),
        nested("formats", u"Select "_s, u"format("_s, u"'1:2'"_s, u",'hh')"_s, AsNumber),
        nested("formats by formats", u"Select "_s, u"format('1:2',"_s, u"'hh'"_s, u")"_s, AsNumber),
        nested("tests for null in brackets", Where, u"isnull("_s, u"EmpNo"_s, u")"_s, u" = True"_s),
        nested("patterns on the right", Where, u"EmpNo like ("_s, u"'x'"_s, u")"_s),
        nested("ranges on the right", Where, u"EmpNo between '1' and ("_s, u"'2'"_s, u")"_s),
        nested("greatest of greatest", u"Select "_s, u"max("_s, u"EmpNo"_s, u")"_s, u" as a From Base06"_s),
        nested("tables in brackets", u"Select EmpNo From "_s, u"("_s, u"Base06"_s, u")"_s),
        {"joins",
         [](int times) {
             return u"Select Holi01.HoliNo From "_s + many(u"("_s, times) + u"Holi01"_s +
                    many(u" INNER JOIN Rule04 ON Holi01.HoliNo = Rule04.EmpNo)"_s, times);
         },
         Way::Select, false},
        {"joins on the right",
         [](int times) {
             return u"Select Holi01.HoliNo From "_s + many(u"Holi01 INNER JOIN ("_s, times) + u"Rule04"_s +
                    many(u") ON Holi01.HoliNo = Rule04.EmpNo"_s, times);
         },
         Way::Select, false},
    };
    for (Chain& each : chains)
        each.deepens = each.allowed;
    return chains;
}

/// Names of a list that stand for the one before, each named as often as the form has it.
Chain aliases(const char* title, const QString& form, const QString& tail = {}) {
    return {title, [=](int times) {
                QString text = u"Select BreakY as a0"_s;
                for (int number = 1; number <= times; ++number) {
                    const QString former = u"a"_s + QString::number(number - 1);
                    text +=
                        u","_s + QString(form).replace(u'?', former) + u" as a"_s + QString::number(number);
                }
                return text + u" From Base06"_s + tail;
            }};
}

std::vector<Chain> listChains() {
    return {
        aliases("names of names", u"?"_s),
        aliases("names of sums", u"?+1"_s),
        aliases("names that are named twice", u"?+?"_s),
        aliases("names of ranges", u"(? between 1 and ?)"_s),
        aliases("names of patterns", u"(? like ?)"_s),
        chain("names that are named again", u"Select BreakY+1 as a"_s, u",a as b"_s, u" From Base06"_s),
        chain("names in a condition", u"Select BreakY+1+1+1+1+1+1 as a From Base06 Where a = 1"_s,
              u" or a = 2"_s),
        chain("names in an order", u"Select BreakY+1+1+1+1+1+1 as a From Base06 Order by a"_s, u",a"_s),
        chain("a name that stands for itself through another", u"Select b"_s, u"+1"_s,
              u" as a,a as b From Base06"_s, Way::Select, false),
        chain("columns", u"Select EmpNo"_s, u",EmpNo"_s, u" From Base06"_s),
        chain("whole rows", u"Select *"_s, u",*"_s, u" From Base01"_s),
        chain("orders", u"Select EmpNo From Base06 Order by EmpNo"_s, u",EmpName"_s),
        chain("groups", u"Select EmpNo From Base06 Group by EmpNo"_s, u",EmpNo"_s),
        chain("tables", u"Select Base06.EmpNo From Base06"_s, u",Rule04"_s, {}, Way::Select, false),
        chain("changes", u"Update Base06 Set EmpName = 'x'"_s, u",EmpName = 'y'"_s, {}, Way::Execute),
        chain("values", u"Insert into Base01(TitleNo) Values('1'"_s, u",'2'"_s, u")"_s, Way::Execute, false),
        chain("characters of a text", Where + u"EmpNo = '"_s, u"x"_s, u"'"_s),
        chain("characters of a pattern", Where + u"EmpNo like '"_s, u"*0"_s, u"x'"_s),
        chain("digits", Where + u"BreakY = 9"_s, u"9"_s),
        chain("characters of a name", u"Select "_s, u"x"_s, u" From Base06"_s, Way::Select, false),
        chain("blanks", u"Select"_s, u" "_s, u"EmpNo From Base06"_s),
        chain("apostrophes", Where + u"EmpNo = "_s, u"'"_s, {}, Way::Select, false),
        chain("number signs", Where + u"Birth = "_s, u"#"_s, {}, Way::Select, false),
    };
}

} // namespace

std::vector<Chain> allChains() {
    std::vector<Chain> chains = operatorChains();
    for (const auto& part : {nestedChains(), listChains()}) {
        chains.insert(chains.end(), part.begin(), part.end());
    }
    return chains;
}

std::optional<std::size_t> costOf(const QString& text, Way way) {
    const auto cost = [](const statement::Notes& notes, qsizetype characters) {
        return notes.expressions + static_cast<std::size_t>(characters);
    };
    try {
        statement::Lexed lexed;
        statement::lex(text, lexed);
        const std::size_t literals = lexed.literals.size();
        if (way == Way::Find) {
            const statement::ExpressionPtr tree = statement::parseCondition(lexed);
            const auto plan = statement::writeTableCondition(*tree, literals, *findTable(u"Base06"));
            return cost(plan, plan.sql.size());
        }
        const statement::Plan plan = statement::write(statement::parseStatement(lexed), literals);
        if (plan.select)
            return cost(plan, plan.select->sql.size() + plan.select->identitySql.size() +
                                  plan.select->rowSql.size());
        return cost(plan, plan.change->sql.size() + plan.change->first.size() + plan.change->second.size());
    } catch (const RunTimeError&) {
        return std::nullopt;
    }
}

} // namespace pontrel::test
