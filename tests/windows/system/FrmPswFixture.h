#pragma once

#include "app/RecordChildFixture.h"
#include "app/frmLogin.h"

namespace pontrel::test {

/// The accounts' window open over Form8, and the login that follows.
class FrmPswFixture : public RecordChildFixture {
  public:
    FrmPswFixture() : RecordChildFixture(QStringLiteral("FrmPsw"), QStringLiteral("CmdSet(1)")) {}

    [[nodiscard]] QStringList accounts() { return rowsOf(database(), QStringLiteral("syst02")); }
    [[nodiscard]] QCheckBox& right(int index) const {
        return at<QCheckBox>(QStringLiteral("Check1(%1)").arg(index));
    }
    [[nodiscard]] QList<bool> rights() const {
        QList<bool> ticked;
        for (int index = 0; index < 8; ++index)
            ticked << right(index).isChecked();
        return ticked;
    }

    void addAccount(const QString& account, const QString& password) {
        insertRow(database(), QStringLiteral("syst02"), {{u"Account", account}, {u"Password", password}});
    }

    /// Shows the login again, which answers as this user.
    void logIn(const QString& account, const QString& password) {
        answers.expect(QStringLiteral("frmLogin"), typed(account, password));
        frmLogin().showModal();
    }
    [[nodiscard]] static PromptAnswers::Action typed(const QString& account, const QString& password) {
        return [account, password](QWidget& dialog) {
            for (const QString& name : {QStringLiteral("txtUserName"), QStringLiteral("txtPassword")}) {
                control<QLineEdit>(dialog, name).clear();
                QTest::keyClicks(&control(dialog, name),
                                 name == QStringLiteral("txtUserName") ? account : password);
            }
            click(control(dialog, QStringLiteral("cmdOK")));
        };
    }
};

} // namespace pontrel::test
