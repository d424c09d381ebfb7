#include "support/TestStore.h"

#include "store/NewStore.h"
#include "store/StorePath.h"

#include <QDir>
#include <QFile>

#include <stdexcept>

namespace pontrel::test {

TestStore::TestStore() {
    if (!folder_.isValid() || !QDir(folder_.path()).mkpath(QStringLiteral("punch")))
        throw std::runtime_error("no temporary folder");
    createStore(path(), {punchFolder(), QStringLiteral("tester"), QStringLiteral("secret")});
    database_ = connect();
}

TestStore::~TestStore() = default;

std::unique_ptr<Database> TestStore::connect() const {
    return std::make_unique<Database>(path());
}

QString TestStore::path() const {
    return storePathIn(folder_.path());
}

QString TestStore::punchFolder() const {
    return folder_.filePath(QStringLiteral("punch"));
}

QString TestStore::writePunchFile(const QString& name, const QByteArray& content) const {
    const QString path = punchFolder() + u'/' + name;
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        throw std::runtime_error("cannot write " + path.toStdString());
    return path;
}

void TestStore::clear() {
    for (const char16_t* table : {u"Over01", u"Holi04", u"Holi03", u"Canc02", u"Rule03", u"Base04", u"Base06",
                                  u"Atte01", u"Atte02", u"Atte03", u"View02", u"AtteTemp", u"AtteTemp1"})
        database_->execute(QStringLiteral("delete * from ") + QString::fromUtf16(table));
}

void TestStore::holdOpen() {
    stage_.emplace(*database_);
}

} // namespace pontrel::test
