#include "paper/SheetFile.h"

#include "paper/DataTable.h"
#include "store/Format.h"

#include <QFile>

#include <xlsxwriter.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace pontrel::paper {

namespace {

constexpr std::size_t LinesBetweenProgress = 1000;
const double DayZero = static_cast<double>(BaseDate.toJulianDay()); ///< The day that a sheet counts as 0.
constexpr double DayMilliseconds = 24.0 * 60 * 60 * 1000;
constexpr int MostCharacters = 32767; ///< Of a cell.
constexpr double LeastCharacters = 6;

/// The days of a sheet are counted so that 1 March 1900 is 61; before, it knows no dates.
constexpr double FirstCertainDay = 61;

/// An open book, closed on the way of an error as well: it holds files.
class Book {
  public:
    explicit Book(const NewFile& target)
        : path_(QFile::encodeName(target.path())), folder_(QFile::encodeName(target.folder())) {
        lxw_workbook_options options{};
        options.constant_memory = LXW_TRUE;
        options.tmpdir = folder_.data();
        book_ = workbook_new_opt(path_.constData(), &options);
    }
    ~Book() {
        if (book_)
            (void)workbook_close(book_);
    }
    Book(const Book&) = delete;
    Book& operator=(const Book&) = delete;

    [[nodiscard]] lxw_workbook* get() { return book_; }
    [[nodiscard]] lxw_error close() { return workbook_close(std::exchange(book_, nullptr)); }

  private:
    QByteArray path_;
    QByteArray folder_;
    lxw_workbook* book_ = nullptr;
};

class SheetWriter {
  public:
    SheetWriter(Book& book, const PlainTable& table) : book_(book), table_(table) {
        captions_ = workbook_add_format(book.get());
        format_set_bold(captions_);
        format_set_bottom(captions_, LXW_BORDER_THIN);
        date_ = format("yyyy/mm/dd");
        time_ = format("hh:mm");
        dateTime_ = format("yyyy/mm/dd hh:mm");
        whole_ = format("0");
        oneDecimal_ = format("0.0");
    }

    void beginSheet() {
        sheet_ = workbook_add_worksheet(book_.get(), nullptr);
        line_ = 0;
        lxw_col_t place = 0;
        for (const PlainTable::Column& column : table_.columns()) {
            worksheet_set_column(sheet_, place, place, std::max(LeastCharacters, column.characters), nullptr);
            check(worksheet_write_string(sheet_, 0, place++, column.caption.toUtf8().constData(), captions_));
        }
        worksheet_freeze_panes(sheet_, 1, 0);
    }

    void endSheet() {
        const auto last = static_cast<lxw_col_t>(table_.columns().size() - 1);
        worksheet_autofilter(sheet_, 0, 0, line_, last);
    }

    void write(std::size_t line) {
        ++line_;
        const std::vector<PlainTable::Column>& columns = table_.columns();
        for (std::size_t column = 0; column < columns.size(); ++column)
            write(table_.at(line, column, scratch_), columns[column], static_cast<lxw_col_t>(column));
    }

    [[nodiscard]] bool failed() const { return failed_; }

  private:
    lxw_format* format(const char* numbers) {
        lxw_format* made = workbook_add_format(book_.get());
        format_set_num_format(made, numbers);
        return made;
    }

    void check(lxw_error result) { failed_ = failed_ || result != LXW_NO_ERROR; }

    void number(lxw_col_t place, double value, lxw_format* format) {
        // No sheet can hold what is beyond all numbers.
        if (!std::isfinite(value))
            return text(place, value < 0 ? u"-∞" : u"∞");
        check(worksheet_write_number(sheet_, line_, place, value, format));
    }

    void text(lxw_col_t place, QStringView text) {
        QString kept = text.left(MostCharacters).toString();
        // Characters that XML does not allow.
        for (QChar& character : kept) {
            const char16_t unit = character.unicode();
            if ((unit < 0x20 && unit != u'\n' && unit != u'\t') || unit >= 0xfffe)
                character = u' ';
        }
        check(worksheet_write_string(sheet_, line_, place, kept.toUtf8().constData(), nullptr));
    }

    /// A date before the sheet's own counting is certain is a text.
    void day(lxw_col_t place, double days, lxw_format* format, QStringView otherwise) {
        days >= FirstCertainDay ? number(place, days, format) : text(place, otherwise);
    }

    void write(const PlainTable::Content& content, const PlainTable::Column& column, lxw_col_t place) {
        using Kind = PlainTable::Kind;
        switch (content.kind) {
        case Kind::Nothing:
            break;
        case Kind::Text:
            text(place, content.text);
            break;
        case Kind::Number:
            number(place, content.number,
                   column.format == Format::Whole        ? whole_
                   : column.format == Format::OneDecimal ? oneDecimal_
                                                         : nullptr);
            break;
        case Kind::Date: {
            QString written;
            appendNumber(written, content.number, Format::Date, {});
            day(place, content.number - DayZero, date_,
                content.text.isNull() ? QStringView(written) : content.text);
            break;
        }
        case Kind::Time:
            number(place, content.number / (24.0 * 60 * 60), time_);
            break;
        case Kind::DateTime: {
            const QString written =
                fromDayMilliseconds(content.number).toString(QStringLiteral("yyyy/MM/dd hh:mm"));
            day(place, (content.number - DayZero * DayMilliseconds) / DayMilliseconds, dateTime_,
                content.text.isNull() ? QStringView(written) : content.text);
            break;
        }
        }
    }

    Book& book_;
    const PlainTable& table_;
    lxw_worksheet* sheet_ = nullptr;
    lxw_row_t line_ = 0;
    lxw_format *captions_, *date_, *time_, *dateTime_, *whole_, *oneDecimal_;
    QString scratch_;
    bool failed_ = false;
};

} // namespace

bool saveSheet(const ReportDocument& document, const QString& path, const Progress& progress,
               std::size_t sheetLines) {
    return saveSheet(DataTable(document), path, progress, sheetLines);
}

bool saveSheet(const PlainTable& table, const QString& path, const Progress& progress,
               std::size_t sheetLines) {
    NewFile target(path);
    Book book(target);
    if (!book.get())
        target.fail(QStringLiteral("libxlsxwriter"));
    SheetWriter writer(book, table);
    writer.beginSheet();
    std::size_t onSheet = 0;
    for (std::size_t line = 0; line < table.lineCount(); ++line, ++onSheet) {
        if (onSheet == std::min(sheetLines, MostSheetLines)) {
            writer.endSheet();
            writer.beginSheet();
            onSheet = 0;
        }
        writer.write(line);
        if (progress && line % LinesBetweenProgress == 0 && !progress(line, table.lineCount()))
            return false;
    }
    writer.endSheet();
    const lxw_error result = book.close();
    if (result != LXW_NO_ERROR || writer.failed())
        target.fail(Unfinished + u'：' + QString::fromUtf8(lxw_strerror(result)));
    target.put();
    return true;
}

} // namespace pontrel::paper
