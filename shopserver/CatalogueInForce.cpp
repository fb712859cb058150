#include "shopserver/CatalogueInForce.h"
#include "common/AtomicFile.h"
#include "shopserver/CatalogueReader.h"
#include <QFile>

namespace shop {
namespace {

constexpr qint64 kMostBytes = 64 * 1024 * 1024;

QByteArray contentOf(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw CatalogueError("Es wurde keine Datenbank übertragen.");
    const QByteArray bytes = file.read(kMostBytes + 1);
    if (bytes.size() > kMostBytes)
        throw CatalogueError("Die Datenbank ist zu gross.");
    return bytes;
}

} // namespace

CatalogueInForce::CatalogueInForce(QString upload, QString copy) :
    m_upload(std::move(upload)), m_copy(std::move(copy)) {
    if (QFile::exists(m_copy))
        m_catalogue = std::make_shared<const Catalogue>(readCatalogue(contentOf(m_copy)));
}

void CatalogueInForce::takeUpload() {
    const std::lock_guard one(m_taking);
    const QByteArray bytes = contentOf(m_upload);
    auto catalogue = std::make_shared<const Catalogue>(readCatalogue(bytes));
    common::writeFileAtomically(m_copy, bytes, QFile::ReadOwner | QFile::WriteOwner);
    const std::lock_guard lock(m_mutex);
    m_catalogue = std::move(catalogue);
}

std::shared_ptr<const Catalogue> CatalogueInForce::get() const {
    const std::lock_guard lock(m_mutex);
    return m_catalogue;
}

} // namespace shop
