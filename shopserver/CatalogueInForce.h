#pragma once
#include "shopserver/Catalogue.h"
#include <QString>
#include <memory>
#include <mutex>

namespace shop {

/// The one catalogue that all requests see, and its copy in a file of the shop's own, by which a restart
/// finds it again.
class CatalogueInForce {
  public:
    /// `upload`: where the desk puts its database. `copy`: where the one in force is kept.
    CatalogueInForce(QString upload, QString copy);

    /// Puts the uploaded one in force. CatalogueError, or a RunTimeError of the file, leaves the former one.
    void takeUpload();
    /// Null as long as nothing was uploaded.
    std::shared_ptr<const Catalogue> get() const;

  private:
    QString m_upload, m_copy;
    std::mutex m_taking;
    mutable std::mutex m_mutex;
    std::shared_ptr<const Catalogue> m_catalogue;
};

} // namespace shop
