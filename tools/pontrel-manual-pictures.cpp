// Lays the pictures that the manual shows beside it, taken from those that the tour has left in a folder.

#include <QDir>
#include <QFile>
#include <QHash>
#include <QImage>
#include <QRegularExpression>

#include <algorithm>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

constexpr int MostColours = 256;

/// The names of the pictures in the chapters of a folder, sorted.
QStringList picturesNamedIn(const QDir& manual) {
    static const QRegularExpression picture(u"\\]\\(pictures/([^)]+\\.png)\\)"_s);
    QStringList names;
    const QStringList chapters = manual.entryList({u"*.md"_s}, QDir::Files);
    for (const QString& chapter : chapters) {
        QFile file(manual.filePath(chapter));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QString text = QString::fromUtf8(file.readAll());
        for (auto each = picture.globalMatch(text); each.hasNext();)
            names << each.next().captured(1);
    }
    names.removeDuplicates();
    names.sort();
    return names;
}

/// The colour with so many bits of each of its parts, spread over the whole range again.
QRgb rounded(QRgb colour, int bits) {
    const auto part = [bits](int value) {
        const int most = (1 << bits) - 1;
        return (value * most + 127) / 255 * 255 / most;
    };
    return qRgb(part(qRed(colour)), part(qGreen(colour)), part(qBlue(colour)));
}

/// The picture with a table of at most 256 colours, as fine as these allow: a third of the size.
QImage withFewColours(const QImage& picture) {
    const QImage full = picture.convertToFormat(QImage::Format_RGB32);
    for (int bits = 8; bits > 1; --bits) {
        QHash<QRgb, int> places;
        QImage small(full.size(), QImage::Format_Indexed8);
        for (int y = 0; y < full.height() && places.size() <= MostColours; ++y) {
            for (int x = 0; x < full.width(); ++x) {
                const auto place = places.constFind(rounded(full.pixel(x, y), bits));
                const auto next = static_cast<int>(places.size());
                const int found =
                    place != places.cend() ? *place : *places.insert(rounded(full.pixel(x, y), bits), next);
                if (found < MostColours)
                    small.scanLine(y)[x] = static_cast<uchar>(found);
            }
        }
        if (places.size() > MostColours)
            continue;
        QList<QRgb> table(places.size());
        for (auto each = places.cbegin(); each != places.cend(); ++each)
            table[each.value()] = each.key();
        small.setColorTable(table);
        return small;
    }
    return full;
}

/// Whether it could be laid there.
bool layPicture(const QString& from, const QString& to) {
    const QImage picture(from);
    if (picture.isNull()) {
        std::fprintf(stderr, "%s is no picture.\n", qPrintable(from));
        return false;
    }
    if (!withFewColours(picture).save(to, "PNG", 0)) {
        std::fprintf(stderr, "%s cannot be written.\n", qPrintable(to));
        return false;
    }
    return true;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("Usage: pontrel-manual-pictures TOUR MANUAL\n"
                   "\n"
                   "Lays the pictures that the chapters in the folder MANUAL show into MANUAL/pictures, from "
                   "the folder\n"
                   "TOUR that pontrel-tour has filled, and removes those that no chapter shows.\n",
                   stderr);
        return 2;
    }
    const QDir tour(QString::fromLocal8Bit(argv[1]));
    const QDir manual(QString::fromLocal8Bit(argv[2]));
    const QStringList named = picturesNamedIn(manual);
    QDir pictures(manual.filePath(u"pictures"_s));
    if (named.isEmpty() || !manual.mkpath(u"pictures"_s)) {
        std::fprintf(stderr, "%s holds no chapters with pictures.\n", argv[2]);
        return 1;
    }
    bool isDone = true;
    for (const QString& name : named)
        isDone &= layPicture(tour.filePath(name), pictures.filePath(name));
    const QStringList there = pictures.entryList({u"*.png"_s}, QDir::Files);
    for (const QString& name : there) {
        if (!named.contains(name))
            pictures.remove(name);
    }
    return isDone ? 0 : 1;
}
