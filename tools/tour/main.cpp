// pontrel-tour: goes through the program's windows with the example organisation and takes their pictures.

#include "tour/Output.h"
#include "tour/Tour.h"

#include <QCoreApplication>
#include <QDir>
#include <QStringList>

namespace {

using namespace pontrel::tour;
using namespace Qt::StringLiterals;

/// Ends with this status where the command line cannot be understood.
constexpr int UsageStatus = 2;

const QString Usage =
    u"Usage: pontrel-tour [FOLDER]\n\n"
    "Goes through the windows of Pontrel as a person does, over a demo store made for it alone, prints the\n"
    "exceptions of the day that it reads, and leaves pictures of all windows in FOLDER, or in\n"
    "build/tour-pictures below the current folder. Ends with 0 where every step did what it should."_s;

int takeWholeTour(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    if (arguments == QStringList{u"--help"_s} || arguments == QStringList{u"-h"_s}) {
        print(Usage);
        return 0;
    }
    const QString folder = arguments.value(0, u"build/tour-pictures"_s);
    if (arguments.size() > 1 || folder.isEmpty() || folder.startsWith(u'-')) {
        print(Usage, stderr);
        return UsageStatus;
    }
    return takeTour(QDir(folder).absolutePath());
}

} // namespace

int main(int argc, char** argv) {
    for (const Part part : {Part::Visit, Part::SecondStart}) {
        if (argc == 3 && QString::fromLocal8Bit(argv[1]) == argumentOf(part))
            return takePart(part, QString::fromLocal8Bit(argv[2]), argv);
    }
    return takeWholeTour(argc, argv);
}
