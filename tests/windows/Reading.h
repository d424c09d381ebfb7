#pragma once

#include "support/Contrast.h"

#include <QCoreApplication>
#include <QWidget>

namespace pontrel::test {

inline constexpr double LeastContrast = 4.5; ///< Of a text to its ground.
/// The same as it is measured of a few figures, which are so thin that no point has their full colour.
inline constexpr double LeastOfFigures = 4.0;

/// What a walk has read of a window, and what of it is too pale.
class Reading {
  public:
    explicit Reading(QWidget& window) : window_(window) {}

    void read(const QString& place) {
        QCoreApplication::processEvents();
        const QImage picture = window_.grab().toImage();
        for (const ShownText& text : shownTexts(window_))
            ++(text.enabled ? enabled_ : disabled_);
        tell(place, picture, shownTexts(window_), LeastContrast);
    }
    /// The captions of buttons that are on, and the rows of grids, as well.
    void readButtonsAndGrids(const QString& place) {
        QCoreApplication::processEvents();
        const QList<ShownText> texts = buttonsAndRows(window_);
        others_ += static_cast<int>(texts.size());
        tell(place, window_.grab().toImage(), texts, LeastOfFigures);
    }
    [[nodiscard]] int enabledTexts() const { return enabled_; }
    [[nodiscard]] int disabledTexts() const { return disabled_; }
    [[nodiscard]] int buttonsAndRowsRead() const { return others_; }
    [[nodiscard]] QString pale() const { return pale_.join(u'\n'); }

  private:
    void tell(const QString& place, const QImage& picture, const QList<ShownText>& texts, double least) {
        for (const ShownText& text : texts) {
            const double contrast = contrastIn(picture, text.place);
            if (contrast < least)
                pale_ << QStringLiteral("%1: %2 \"%3\": %4")
                             .arg(place, text.control, text.text)
                             .arg(contrast, 0, 'f', 1);
        }
    }

    QWidget& window_;
    int enabled_ = 0;
    int disabled_ = 0;
    int others_ = 0;
    QStringList pale_;
};

} // namespace pontrel::test
