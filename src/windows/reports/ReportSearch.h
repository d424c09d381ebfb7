#pragma once

#include "paper/PageSearch.h"

#include <QObject>
#include <QTimer>

namespace pontrel {

/// Looks for a text on all pages of a report, a few at a time between what else there is to do; another text
/// ends the search of the one before.
class ReportSearch : public QObject {
    Q_OBJECT
  public:
    /// The document must outlive the search.
    ReportSearch(const paper::ReportDocument& document, QObject* parent);

    /// Forgets what was found, and begins anew; an empty text is found nowhere.
    void start(const QString& wanted);

    [[nodiscard]] const QString& wanted() const { return wanted_; }
    /// What has been found so far, in the order of the pages.
    [[nodiscard]] const std::vector<paper::PageHit>& hits() const { return hits_; }
    [[nodiscard]] bool isDone() const { return next_ >= document_.pageCount(); }

  Q_SIGNALS:
    void advanced(); ///< Some pages more have been looked at, perhaps the last ones.

  private:
    void lookFurther();

    const paper::ReportDocument& document_;
    QString wanted_;
    std::vector<paper::PageHit> hits_;
    int next_ = 0;
    QTimer timer_;
};

} // namespace pontrel
