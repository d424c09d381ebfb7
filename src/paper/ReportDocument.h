#pragma once

#include "paper/PageContent.h"

#include <QDate>
#include <QList>
#include <QString>

#include <memory>

namespace pontrel::paper {

/// An entry of the tree of groups.
struct GroupEntry {
    int level = 0; ///< From 0, the outermost.
    QString text;
    int page = 0; ///< From 0.
};

/// A report with all its records, as pages. It does not change, and needs no store any more.
class ReportDocument {
  public:
    /// Reads the records and lays them out. `today` is the date of printing. Throws RunTimeError.
    [[nodiscard]] static std::shared_ptr<const ReportDocument>
    make(const QString& dataFile, const Template& layout, const Selection& selection,
         const NamedValues& names, QDate today, std::shared_ptr<const TextMeasure> measure);

    ReportDocument(Template layout, ReportRows rows, NamedValues names,
                   std::shared_ptr<const TextMeasure> measure);
    ReportDocument(const ReportDocument&) = delete;
    ReportDocument& operator=(const ReportDocument&) = delete;

    [[nodiscard]] const Template& layout() const { return layout_; }
    [[nodiscard]] const ReportRows& rows() const { return rows_; }
    [[nodiscard]] const NamedValues& names() const { return names_; }
    [[nodiscard]] const Groups& groups() const { return groups_; }
    [[nodiscard]] const CellText& texts() const { return texts_; }
    [[nodiscard]] const TextMeasure& measure() const { return *measure_; }

    /// "C02 單位別員工出勤狀況表"; codes are told in capitals, also those of files in small letters.
    [[nodiscard]] QString title() const { return layout_.code.toUpper() + u' ' + layout_.caption; }

    /// At least 1. Pages are counted from 0.
    [[nodiscard]] int pageCount() const { return static_cast<int>(pages_.pages().size()); }
    [[nodiscard]] std::size_t rowCount() const { return rows_.count(); }
    void emitPage(int page, PageSink& sink) const { content_.emitPage(static_cast<std::size_t>(page), sink); }
    [[nodiscard]] int pageOf(std::size_t row) const { return static_cast<int>(pages_.pageOf(row)); }
    [[nodiscard]] const PageLayout& pages() const { return pages_; }

    /// The tree of groups, a parent ahead of its children. Made at the first call.
    [[nodiscard]] const QList<GroupEntry>& outline() const;

    /// The text of a page: what stands beside each other with tabs between, a line below the other.
    [[nodiscard]] QString textOf(int page) const;

  private:
    Template layout_;
    ReportRows rows_;
    NamedValues names_;
    std::shared_ptr<const TextMeasure> measure_;
    Groups groups_;
    CellText texts_;
    PageLayout pages_;
    PageContent content_;
    mutable std::optional<QList<GroupEntry>> outline_;
};

/// A date as reports tell it, 115/01/05; empty for one that is not valid.
[[nodiscard]] QString rocDate(QDate date);

/// The period that a report speaks of: Sdate and Edate as given, else the bounds of the formula's first date
/// column, in years of the local calendar; empty where there are neither.
[[nodiscard]] QString periodText(const NamedValues& names, const Selection& selection);

} // namespace pontrel::paper
