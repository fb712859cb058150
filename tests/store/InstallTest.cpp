#include "common/RunTimeError.h"
#include "install/Installer.h"
#include "install/OwnerPassword.h"
#include "install/Schema.h"
#include "store/PasswordGate.h"
#include "store/Recordset.h"
#include "store/SqliteEngine.h"
#include "store/StoreGlobals.h"
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using install::Database;

namespace {

std::unique_ptr<store::SqliteEngine> open(const QTemporaryDir& folder, Database database) {
    const install::DatabaseFile& file = install::databaseFiles()[int(database)];
    return std::make_unique<store::SqliteEngine>(folder.filePath(u"Data/"_s + file.fileName), file.password);
}

/// Reads as a user who may read the file and not write it.
TEST(Install, aDatabaseThatMayNotBeWrittenIsToldAtTheStart) {
    constexpr uid_t kNobody = 65534;
    const bool root = geteuid() == 0;
    const QTemporaryDir folder;
    install::installDatabases(folder.path());
    store::setAppPath(folder.path());
    for (const char16_t* name : {u"DBTavolino.mdb", u"DB_PRINT_Tavolino.mdb"}) {
        const QString file = folder.filePath(u"Data/"_s + QString::fromUtf16(name));
        QFile::setPermissions(file, QFile::ReadOwner);
        if (root) {
            for (QDirIterator all(folder.path(), QDir::AllEntries | QDir::NoDotAndDotDot,
                                  QDirIterator::Subdirectories);
                 all.hasNext();)
                ASSERT_EQ(chown(all.next().toUtf8().constData(), kNobody, kNobody), 0);
            ASSERT_EQ(chown(folder.path().toUtf8().constData(), kNobody, kNobody), 0);
            ASSERT_EQ(seteuid(kNobody), 0);
        }
        QString told;
        try {
            store::OpenDatabases();
        } catch (const common::RunTimeError& error) {
            EXPECT_EQ(error.number(), common::kNotWritable) << error.what();
            told = error.sentence();
        }
        ASSERT_EQ(root ? seteuid(0) : 0, 0);
        EXPECT_TRUE(told.contains(QString::fromUtf16(name))) << told.toStdString();
        for (store::Connection* connection : {&ConnMain, &ConnPhone, &ConnPrint})
            if (connection->IsOpen())
                connection->Close();
        QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner);
    }
}

QHash<QString, QByteArray> contents(const QString& folder) {
    QHash<QString, QByteArray> files;
    for (QDirIterator file(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
         file.hasNext();) {
        QFile content(file.next());
        EXPECT_TRUE(content.open(QIODevice::ReadOnly));
        files.insert(file.filePath(), content.readAll());
    }
    return files;
}

TEST(Install, aSecondRunAddsWhatIsMissingAndTouchesNothing) {
    const QTemporaryDir folder;
    const QTemporaryDir reports;
    const QStringList names = {u"rep_report1.html"_s, u"rep_report2.html"_s, u"rep_report3.html"_s};
    for (const QString& name : names) {
        QFile report(reports.filePath(name));
        ASSERT_TRUE(report.open(QIODevice::WriteOnly) && report.write("neu") == 3);
    }
    install::InstallOptions options;
    options.reportsFrom = QDir::current().relativeFilePath(reports.path());
    install::installDatabases(folder.path(), options);
    EXPECT_EQ(QDir(folder.filePath(u"Reports"_s)).entryList(QDir::Files, QDir::Name), names);

    const QString changed = folder.filePath(u"Reports/rep_report1.html"_s);
    QFile file(changed);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("vom Wirt") == 8);
    file.close();
    const QHash<QString, QByteArray> before = contents(folder.path());
    install::installDatabases(folder.path(), options);
    EXPECT_EQ(contents(folder.path()), before);

    // A run that was cut off leaves its unfinished file; the next one starts that file anew.
    const QString phone = folder.filePath(u"Data/DBTavolinoPhone.mdb"_s);
    ASSERT_TRUE(QFile::rename(phone, phone + u".neu"_s));
    ASSERT_TRUE(QFile::resize(phone + u".neu"_s, 5000));
    install::installDatabases(folder.path(), options);
    EXPECT_EQ(contents(folder.path()).keys().size(), before.size());
    EXPECT_FALSE(open(folder, Database::PhoneBook)->columnsOf(u"tbl_PhoneBook"_s).empty());
}

TEST(Install, theOwnersPasswordIsKeptAsAVerifierAlone) {
    const QTemporaryDir folder;
    install::installDatabases(folder.path());
    QFile file(folder.filePath(u"tavolino.ini"_s));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray before = file.readAll();
    file.close();
    const QSettings settings(file.fileName(), QSettings::IniFormat);
    EXPECT_EQ(settings.value(u"Telefon/Leitung"_s).toString(), u"keine"_s);
    EXPECT_EQ(settings.value(u"Inhaber/Name"_s).toString(), u"Inhaber"_s);
    EXPECT_FALSE(install::hasOwnerPassword(folder.path()));
    const auto forOthers = [&] {
        return QFile::permissions(file.fileName()) &
               (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther);
    };
    EXPECT_FALSE(forOthers());
    const auto verifier = [&] {
        return QSettings(file.fileName(), QSettings::IniFormat)
            .value(u"Inhaber/Passwort"_s)
            .toString()
            .toLatin1();
    };
    EXPECT_THROW(install::setOwnerPassword(folder.path(), QString()), common::RunTimeError);
    install::setOwnerPassword(folder.path(), u"Käse = \"gut\"; 100%"_s);
    EXPECT_TRUE(install::hasOwnerPassword(folder.path()));
    EXPECT_TRUE(store::fitsVerifier(verifier(), u"Käse = \"gut\"; 100%"_s));
    install::setOwnerPassword(folder.path(), u"zweites"_s);
    EXPECT_TRUE(store::fitsVerifier(verifier(), u"zweites"_s));
    EXPECT_FALSE(store::fitsVerifier(verifier(), u"Käse = \"gut\"; 100%"_s));
    // Nothing else changes, and nobody else may read.
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QByteArray after = file.readAll();
    EXPECT_FALSE(after.contains("zweites"));
    EXPECT_EQ(after.replace(verifier(), ""), before);
    EXPECT_FALSE(forOthers());
    // The same password never gives the same verifier, and each installation makes up its own.
    EXPECT_NE(store::makeVerifier(u"zweites"_s, 10), store::makeVerifier(u"zweites"_s, 10));
    EXPECT_NE(install::randomPassword(), install::randomPassword());
    EXPECT_GE(install::randomPassword().size(), 12);
}

TEST(Install, aFolderThatCannotBeMadeIsToldByName) {
    const QTemporaryDir folder;
    QFile blocker(folder.filePath(u"Data"_s));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    try {
        install::installDatabases(folder.path());
        FAIL() << "no error";
    } catch (const common::RunTimeError& error) {
        EXPECT_EQ(error.number(), common::kPlatformFailure);
        EXPECT_TRUE(error.sentence().contains(u"Data"_s));
    }
}

} // namespace
