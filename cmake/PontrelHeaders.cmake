# What is precompiled: one set of headers for each floor. <QTest> is not among them, as it knows the folder of each test.

set(standardHeaders <algorithm> <array> <cmath> <cstdint> <functional> <map> <memory> <optional> <set> <span> <string>
                    <utility> <variant> <vector>)
set(coreHeaders <QByteArray> <QDate> <QDateTime> <QDir> <QFile> <QFileInfo> <QHash> <QList> <QObject> <QPointer>
                <QScopedValueRollback> <QString> <QStringList> <QTime> <QVariant>)
set(widgetHeaders <QtGui> <QtWidgets>)

pontrel_headers(pontrel_headers_core LIBRARIES Qt6::Core HEADERS ${standardHeaders} ${coreHeaders})
pontrel_headers(pontrel_headers_windows LIBRARIES Qt6::Widgets HEADERS ${standardHeaders} ${coreHeaders}
                                                                       ${widgetHeaders})
