#include "store/StatementText.h"

#include "store/Format.h"
#include "store/RunTimeError.h"

namespace pontrel {

namespace {

constexpr QLatin1Char Quote('\'');

void appendTwoDigits(QString& statement, int number) {
    statement += QChar(u'0' + number / 10);
    statement += QChar(u'0' + number % 10);
}

} // namespace

QString textLiteral(const QString& text) {
    if (breaksLiteral(text))
        throw runTimeError(error::Syntax, text);
    return Quote + text + Quote;
}

bool breaksLiteral(const QString& text) {
    return text.contains(Quote);
}

QString startLiteral(const QString& start) {
    QString literal = textLiteral(start);
    return literal.insert(literal.size() - 1, u'*');
}

QString dateLiteral(QDate date) {
    if (!date.isValid())
        throw runTimeError(error::Syntax, QStringLiteral("no date"));
    return dateLiteral(shortDate(date));
}

QString dateLiteral(const QString& text) {
    if (text.isEmpty() || text.contains(u'#'))
        throw runTimeError(error::Syntax, text);
    return u'#' + text + u'#';
}

QString timeLiteral(int second) {
    QString result(u'#');
    appendTwoDigits(result, second / 3600);
    result += u':';
    appendTwoDigits(result, second / 60 % 60);
    result += u':';
    appendTwoDigits(result, second % 60);
    return result + u'#';
}

} // namespace pontrel
