#include "common/AtomicFile.h"
#include "common/RunTimeError.h"
#include "support/FullDisk.h"
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

TEST(AtomicFile, AFullDiskLeavesTheFormerFile) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"wichtig"_s);
    constexpr auto kOwner = QFile::ReadOwner | QFile::WriteOwner;
    common::writeFileAtomically(path, QByteArray(600, 'a'), kOwner);
    EXPECT_EQ(QFile::permissions(path) & ~(QFile::ReadUser | QFile::WriteUser), kOwner);
    // Whether the bytes are refused at once, or only when what was buffered is written.
    for (const int size : {1001, 20'000, 1'000'000}) {
        const test::FullDisk full(1000);
        EXPECT_THROW(common::writeFileAtomically(path, QByteArray(size, 'b')), common::RunTimeError) << size;
    }
    EXPECT_EQ(contentOf(path), QByteArray(600, 'a'));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{u"wichtig"_s});
    common::writeFileAtomically(path, QByteArray(900, 'c'));
    EXPECT_EQ(contentOf(path), QByteArray(900, 'c'));
    EXPECT_EQ(QFile::permissions(path) & ~(QFile::ReadUser | QFile::WriteUser), kOwner) << "they stay";
    EXPECT_THROW(common::writeFileAtomically(folder.filePath(u"no/such/folder"_s), "x"),
                 common::RunTimeError);
}

} // namespace
