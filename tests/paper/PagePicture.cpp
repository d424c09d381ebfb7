#include "paper/PagePicture.h"

#include "paper/PagePainter.h"

#include <QPainter>

#include <array>
#include <cmath>
#include <vector>

namespace pontrel::test {

namespace {

constexpr int DotsAnInch = 60;
constexpr int Enlarged = 4;
constexpr double MillimetresAnInch = 25.4;
constexpr double DotsAnHundredth = DotsAnInch / MillimetresAnInch / 100; ///< For 1/100 mm.

/// A frame that glides over both pictures; the means of the greys in it are compared.
struct Frame {
    int width;
    int height;
    double tolerated; ///< Of 255.
};
/// A text that is missing or has moved shows in the small one, by 51 and more; a missing line or shade in the
/// long one, by 10 and more. The same pages drawn by another program differ by 24 and 7.
constexpr std::array Frames{Frame{4, 4, 40}, Frame{128, 10, 8.5}};

/// How much darker or lighter each part of the actual picture is.
class Differences {
  public:
    /// Both in 8 bits of grey.
    Differences(const QImage& expected, const QImage& actual)
        : width_(expected.width()), height_(expected.height()), sums_(size(width_ + 1) * size(height_ + 1)) {
        for (int y = 0; y < height_; ++y) {
            const uchar* before = expected.constScanLine(y);
            const uchar* now = actual.constScanLine(y);
            for (int x = 0; x < width_; ++x)
                sum(x + 1, y + 1) = sum(x, y + 1) + sum(x + 1, y) - sum(x, y) + now[x] - before[x];
        }
    }

    /// Empty where no place of the frame exceeds what is tolerated.
    [[nodiscard]] QString beyond(const Frame& frame) const {
        double greatest = 0;
        QPoint place;
        for (int y = 0; y + frame.height <= height_; ++y) {
            for (int x = 0; x + frame.width <= width_; ++x) {
                const double mean = std::abs(meanIn(frame, x, y));
                if (mean > greatest) {
                    greatest = mean;
                    place = {x, y};
                }
            }
        }
        if (greatest <= frame.tolerated)
            return {};
        const auto millimetres = [](int dot) { return std::lround(dot / DotsAnHundredth / 100); };
        return QStringLiteral("differs by %1 of 255 at %2 mm from the left and %3 mm from the top")
            .arg(std::lround(greatest))
            .arg(millimetres(place.x()))
            .arg(millimetres(place.y()));
    }

  private:
    static std::size_t size(int number) { return static_cast<std::size_t>(number); }
    [[nodiscard]] std::size_t at(int x, int y) const { return size(y) * size(width_ + 1) + size(x); }
    [[nodiscard]] int& sum(int x, int y) { return sums_[at(x, y)]; }
    [[nodiscard]] double meanIn(const Frame& frame, int x, int y) const {
        const int right = x + frame.width;
        const int below = y + frame.height;
        const int sum = sums_[at(right, below)] - sums_[at(x, below)] - sums_[at(right, y)] + sums_[at(x, y)];
        return static_cast<double>(sum) / (frame.width * frame.height);
    }

    int width_;
    int height_;
    std::vector<int> sums_; ///< Of all that stands above and to the left.
};

} // namespace

QImage reduced(const QImage& large) {
    return large
        .scaled(large.width() / Enlarged, large.height() / Enlarged, Qt::IgnoreAspectRatio,
                Qt::SmoothTransformation)
        .convertToFormat(QImage::Format_Grayscale8);
}

QImage pictureOf(const paper::ReportDocument& document, int page,
                 const std::function<void(paper::PageSink& painter)>& emit) {
    const double scale = DotsAnHundredth * Enlarged;
    const auto dots = [](int length) {
        return static_cast<int>(std::lround(length * DotsAnHundredth)) * Enlarged;
    };
    QImage large(dots(document.layout().paperWidth), dots(document.layout().paperHeight),
                 QImage::Format_RGB32);
    large.fill(Qt::white);
    QPainter painter(&large);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    {
        paper::PagePainter sink(painter, dynamic_cast<const paper::GlyphMeasure&>(document.measure()), scale);
        if (emit)
            emit(sink);
        else
            document.emitPage(page, sink);
    }
    painter.end();
    return reduced(large);
}

QString differenceOf(const QImage& expected, const QImage& actual) {
    if (expected.size() != actual.size())
        return QStringLiteral("%1 by %2 dots, expected %3 by %4")
            .arg(actual.width())
            .arg(actual.height())
            .arg(expected.width())
            .arg(expected.height());
    const Differences differences(expected.convertToFormat(QImage::Format_Grayscale8),
                                  actual.convertToFormat(QImage::Format_Grayscale8));
    for (const Frame& frame : Frames)
        if (const QString beyond = differences.beyond(frame); !beyond.isEmpty())
            return beyond;
    return {};
}

} // namespace pontrel::test
