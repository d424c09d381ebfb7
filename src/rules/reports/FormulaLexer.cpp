#include "rules/reports/FormulaLexer.h"

namespace pontrel {

using Kind = FormulaToken::Kind;

namespace {

constexpr QLatin1Char Quote('\''); // no statement

bool isDigit(QChar character) {
    return character >= u'0' && character <= u'9';
}

bool isLetter(QChar character) {
    return (character >= u'a' && character <= u'z') || (character >= u'A' && character <= u'Z');
}

} // namespace

FormulaLexer::FormulaLexer(QStringView formula) : formula_(formula) {
    next_ = cut();
}

FormulaToken FormulaLexer::take() {
    const FormulaToken token = next_;
    next_ = cut();
    return token;
}

void FormulaLexer::fail(const FormulaToken& token, const char* reason, int number) const {
    throw runTimeError(number,
                       QStringLiteral("%1 at character %2").arg(QLatin1String(reason)).arg(token.place + 1),
                       formula_.toString());
}

QChar FormulaLexer::at(qsizetype place) const {
    return place < formula_.size() ? formula_[place] : QChar();
}

FormulaToken FormulaLexer::enclosed(Kind kind, QChar end) {
    const qsizetype begin = place_;
    const qsizetype close = formula_.indexOf(end, begin + 1);
    if (close < 0)
        fail({kind, {}, begin}, "a text or column that does not end");
    place_ = close + 1;
    return {kind, formula_.sliced(begin + 1, close - begin - 1), begin};
}

FormulaToken FormulaLexer::upTo(Kind kind, qsizetype end) {
    const qsizetype begin = place_;
    place_ = end;
    return {kind, formula_.sliced(begin, end - begin), begin};
}

FormulaToken FormulaLexer::cut() {
    while (at(place_).isSpace())
        ++place_;
    if (place_ >= formula_.size())
        return {Kind::End, {}, place_};
    const QChar first = formula_[place_];
    if (first == u'{')
        return enclosed(Kind::Field, u'}');
    if (first == Quote)
        return enclosed(Kind::Text, Quote);
    qsizetype end = place_ + 1;
    if (isLetter(first)) {
        while (isLetter(at(end)))
            ++end;
        return upTo(Kind::Word, end);
    }
    if (isDigit(first) || (first == u'-' && isDigit(at(end)))) {
        while (isDigit(at(end)))
            ++end;
        if (at(end) == u'.' && isDigit(at(end + 1)))
            for (++end; isDigit(at(end));)
                ++end;
        return upTo(Kind::Number, end);
    }
    if ((first == u'<' && (at(end) == u'=' || at(end) == u'>')) || (first == u'>' && at(end) == u'='))
        return upTo(Kind::Sign, end + 1);
    if (QStringView(u"=<>(),").contains(first))
        return upTo(Kind::Sign, end);
    fail({Kind::Sign, {}, place_}, "a character that means nothing");
}

} // namespace pontrel
