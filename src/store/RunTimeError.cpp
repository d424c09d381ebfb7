#include "store/RunTimeError.h"

namespace pontrel {

namespace {

QString standardText(int number) {
    switch (number) {
    case error::Overflow:
        return QStringLiteral("溢位");
    case error::SubscriptOutOfRange:
        return QStringLiteral("陣列索引超出範圍");
    case error::DivisionByZero:
        return QStringLiteral("除以零");
    case error::TypeMismatch:
        return QStringLiteral("型態不符合");
    case error::FileNotFound:
        return QStringLiteral("找不到檔案");
    case error::FileAccess:
        return QStringLiteral("路徑或檔案存取錯誤");
    case error::ObjectNotSet:
        return QStringLiteral("沒有開啟資料庫或資料集");
    case error::FaultyFile:
        return QStringLiteral("檔案的內容不正確");
    case error::InvalidNull:
        return QStringLiteral("Null 的使用無效");
    case error::UpdateWithoutEdit:
        return QStringLiteral("沒有先新增或修改就要存檔");
    case error::NoCurrentRecord:
        return QStringLiteral("沒有目前的資料錄");
    case error::DuplicateKey:
        return QStringLiteral("代碼重複,資料無法存檔");
    case error::StoreNotFound:
        return QStringLiteral("找不到資料庫檔案");
    case error::CannotWrite:
        return QStringLiteral("無法更新,資料庫或資料集是唯讀的");
    case error::DiskOrStore:
        return QStringLiteral("資料庫檔案損壞");
    case error::StoreUnreadable:
        return QStringLiteral("無法讀寫資料庫檔案,請檢查檔案權限與磁碟");
    case error::UnknownName:
        return QStringLiteral("敘述中有不存在的欄位名稱");
    case error::UnknownTable:
        return QStringLiteral("敘述中有不存在的資料表名稱");
    case error::Syntax:
        return QStringLiteral("敘述的語法錯誤");
    case error::RecordDeleted:
        return QStringLiteral("這筆資料錄已被刪除");
    case error::DeleteRefused:
        return QStringLiteral("這筆資料錄有相關的資料,無法刪除");
    case error::StoreLocked:
        return QStringLiteral("資料庫被其他程式鎖定");
    case error::RequiredColumn:
        return QStringLiteral("必要的欄位沒有輸入資料");
    case error::UnrecognizedStore:
        return QStringLiteral("這個檔案不是本系統的資料庫");
    case error::ColumnNotFound:
        return QStringLiteral("資料集裡沒有這個欄位");
    case error::DataConversion:
        return QStringLiteral("輸入的資料不合欄位的型態");
    default:
        return QStringLiteral("執行階段錯誤");
    }
}

} // namespace

RunTimeError::RunTimeError(int number, const QString& text, const QString& technical,
                           const QString& statement)
    : number_(number), text_(text), technical_(technical), statement_(statement) {
    what_ = QStringLiteral("%1: %2").arg(number).arg(text).toUtf8();
    if (!technical.isEmpty())
        what_ += " (" + technical.toUtf8() + ")";
    if (!statement.isEmpty())
        what_ += " in: " + statement.toUtf8();
}

RunTimeError RunTimeError::withRefused(const QStringList& refused) const {
    RunTimeError error = *this;
    error.refused_ = refused;
    return error;
}

RunTimeError runTimeError(int number, const QString& technical, const QString& statement) {
    return RunTimeError(number, standardText(number), technical, statement);
}

} // namespace pontrel
