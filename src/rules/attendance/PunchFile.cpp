#include "rules/attendance/PunchFile.h"

#include "rules/CodeLength.h"
#include "store/RunTimeError.h"
#include "store/StatementText.h"

#include <QDate>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>

namespace pontrel {

namespace {

constexpr qsizetype BufferSize = 64 * 1024;

/// The number that the text's digits make; nothing where another character stands in it.
std::optional<int> digits(QLatin1String text) {
    int number = 0;
    for (const char character : text) {
        if (character < '0' || character > '9')
            return std::nullopt;
        number = number * 10 + (character - '0');
    }
    return number;
}

/// Seconds of the day that "hhmmss" tells; nothing where it is no time.
std::optional<int> secondOfDay(QLatin1String time) {
    const auto hour = digits(time.sliced(0, 2));
    const auto minute = digits(time.sliced(2, 2));
    const auto second = digits(time.sliced(4, 2));
    if (!hour || !minute || !second || *hour > 23 || *minute > 59 || *second > 59)
        return std::nullopt;
    return (*hour * 60 + *minute) * 60 + *second;
}

/// The date of exactly four, two and two digits; an invalid one where it is none from the year 100 on.
QDate dateOf(QLatin1String year, QLatin1String month, QLatin1String day) {
    const auto y = digits(year);
    const auto m = digits(month);
    const auto d = digits(day);
    return y && m && d && *y >= 100 ? QDate(*y, *m, *d) : QDate();
}

QByteArray bytes(QLatin1String text) {
    return QByteArray(text.data(), text.size());
}

} // namespace

QString fileDayText(const QString& path) {
    const QString name = path.right(12);
    return name.mid(0, 4) + u'/' + name.mid(4, 2) + u'/' + name.mid(6, 2);
}

QDate fileDay(const QString& dayText) {
    const QByteArray text = dayText.toLatin1();
    const QLatin1String view(text);
    const QDate date =
        text.size() == 10 ? dateOf(view.sliced(0, 4), view.sliced(5, 2), view.sliced(8, 2)) : QDate();
    if (!date.isValid())
        throw runTimeError(error::TypeMismatch, dayText);
    return date;
}

void PunchLine::assign(const char* characters, qsizetype length) {
    const qsizetype missing = std::max<qsizetype>(0, Width - length);
    std::memset(characters_.data(), '0', static_cast<std::size_t>(missing));
    std::memcpy(characters_.data() + missing, characters, static_cast<std::size_t>(Width - missing));
}

PunchFile::PunchFile(const QString& path) : path_(path) {
    // Opened before it is looked at, so that it cannot be exchanged in between; without waiting, as a pipe
    // would make it.
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0)
        throw runTimeError(errno == ENOENT || errno == ENOTDIR ? error::FileNotFound : error::FileAccess,
                           path + QStringLiteral(": ") + qt_error_string(errno));
    file_.open(descriptor, QIODevice::ReadOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle);
    struct stat state {};
    if (::fstat(descriptor, &state) != 0 || !S_ISREG(state.st_mode))
        throw runTimeError(error::FileAccess, path + QStringLiteral(": not a regular file"));
}

bool PunchFile::fillBuffer() {
    buffer_.resize(BufferSize);
    const qint64 count = file_.read(buffer_.data(), BufferSize);
    if (count < 0)
        throw runTimeError(error::FileAccess, path_ + QStringLiteral(": ") + file_.errorString());
    buffer_.truncate(static_cast<qsizetype>(count));
    position_ = 0;
    return count > 0;
}

bool PunchFile::readLine(PunchLine& line) {
    // One character more than is looked at, so that the CR of a line's end is known from one inside the line.
    constexpr qsizetype Kept = PunchLine::Width + 1;
    std::array<char, static_cast<std::size_t>(Kept)> kept{};
    qsizetype length = 0;
    bool ended = false;
    bool any = false;
    while (!ended && (position_ < buffer_.size() || fillBuffer())) {
        any = true;
        const qsizetype feed = buffer_.indexOf('\n', position_);
        ended = feed >= 0;
        const qsizetype end = ended ? feed : buffer_.size();
        if (length < Kept) {
            const qsizetype count = std::min(end - position_, Kept - length);
            std::memcpy(kept.data() + length, buffer_.constData() + position_,
                        static_cast<std::size_t>(count));
        }
        length += end - position_;
        position_ = ended ? end + 1 : end;
    }
    if (ended && length > 0 && length <= Kept && kept[static_cast<std::size_t>(length - 1)] == '\r')
        --length;
    line.assign(kept.data(), length);
    return any;
}

const StatementForm& Punch::intoPunches() {
    static const StatementForm form(QStringLiteral(
        "insert into Atte01(EmpNo,UseDate,UseTime,class,ReaderID)values('',#2000/1/1#,#08:00:00#,'','')"));
    return form;
}

const StatementForm& Punch::intoStaging() {
    static const StatementForm form(QStringLiteral(
        "insert into AtteTemp(EmpNo,UseDate,UseTime,class,ReaderID)values('',#2000/1/1#,#08:00:00#,'','')"));
    return form;
}

std::array<Value, 5> Punch::values() const {
    // A statement's own reading of dates is wider: it would take blanks and single digits.
    const QDate UseDate = dateOf(line->year(), line->month(), line->day());
    const std::optional<int> second = secondOfDay(line->time());
    if (!UseDate.isValid() || !second)
        throw runTimeError(error::Syntax, QStringLiteral("invalid date or time %1/%2/%3 %4")
                                              .arg(line->year(), line->month(), line->day(), line->time()));
    return {QString(EmpNo), UseDate, QTime(0, 0).addSecs(*second), QString(classCode),
            QString(line->ReaderID())};
}

PunchReader::PunchReader(std::int16_t LenEmpNo, std::uint8_t IntervalSec, SameReader sameReader)
    : LenEmpNo_(LenEmpNo), IntervalSec_(IntervalSec), sameReader_(sameReader) {}

std::optional<Punch> PunchReader::take(const PunchLine& line) {
    if (!anyLine_)
        rememberReader(line);
    std::optional<Punch> punch;
    const QLatin1String EmpNo = employeeOf(line);
    if (line.lineCode() == QLatin1String("42")) {
        takeKey(line);
    } else if (line.lineCode() == QLatin1String("07")) {
        punch = Punch{EmpNo, &line, line.classCode()};
        if (pending_ && keyApplies(line))
            punch->classCode = QLatin1String(pendingClass_.constData(), pendingClass_.size());
        pending_ = false;
    }
    rememberReader(line);
    return punch;
}

void PunchReader::rememberReader(const PunchLine& line) {
    anyLine_ = true;
    std::copy(line.ReaderID().begin(), line.ReaderID().end(), lastReader_.begin());
}

QLatin1String PunchReader::employeeOf(const PunchLine& line) const {
    requireCodeLength(LenEmpNo_);
    const QLatin1String card = line.card();
    return card.sliced(std::max<qsizetype>(0, card.size() - LenEmpNo_));
}

void PunchReader::takeKey(const PunchLine& line) {
    const QLatin1String EmpNo = employeeOf(line);
    const char key = EmpNo.isEmpty() ? '\0' : EmpNo.data()[EmpNo.size() - 1];
    if (key < '1' || key > '9')
        return;
    pending_ = true;
    pendingTime_ = bytes(line.time());
    pendingClass_ = QByteArray("08") + key;
}

bool PunchReader::keyApplies(const PunchLine& line) const {
    const bool same = std::equal(lastReader_.begin(), lastReader_.end(), line.ReaderID().begin());
    if (sameReader_ == SameReader::Required && !same)
        return false;
    const auto keyTime = secondOfDay(QLatin1String(pendingTime_.constData(), pendingTime_.size()));
    const auto swipeTime = secondOfDay(line.time());
    if (!keyTime || !swipeTime)
        throw runTimeError(error::TypeMismatch, QStringLiteral("no time of day"));
    // Deliberate: of the elapsed time only the seconds field counts, not the minutes before it.
    return std::abs(*swipeTime - *keyTime) % 60 <= IntervalSec_;
}

} // namespace pontrel
