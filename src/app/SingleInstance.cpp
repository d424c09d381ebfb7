#include "app/SingleInstance.h"

#include <QCryptographicHash>
#include <QFileInfo>

#include <unistd.h>

namespace pontrel {

using namespace Qt::StringLiterals;

SingleInstance::SingleInstance(const QString& programFolder) {
    // A name outside the file system: it leaves no file behind that a killed program would have to clear
    // away.
    server_.setSocketOptions(QLocalServer::AbstractNamespaceOption);
    first_ =
        server_.listen(nameFor(programFolder)) || server_.serverError() != QAbstractSocket::AddressInUseError;
}

QString SingleInstance::nameFor(const QString& programFolder) {
    const QByteArray folder = QFileInfo(programFolder).canonicalFilePath().toUtf8();
    const QByteArray digest = QCryptographicHash::hash(folder, QCryptographicHash::Sha256).toHex();
    return u"pontrel-%1-%2"_s.arg(QString::number(::getuid()), QString::fromLatin1(digest));
}

} // namespace pontrel
