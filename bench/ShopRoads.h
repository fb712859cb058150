#pragma once
#include "Measure.h"
#include "Quiet.h"
#include "RawStore.h"
#include "tests/support/Servers.h"
#include <QTemporaryDir>

namespace bench {

/// The roads of the web shop: the export of the catalogue beside its bare statements, and the upload of a
/// large file beside the curl program.
class ShopRoads {
  public:
    /// The installation in the folder is open; `store` is a file with the same content.
    ShopRoads(const QString& folder, RawStore& store);
    /// Takes back what was added to the catalogue.
    ~ShopRoads();

    std::vector<Road> roads();

  private:
    /// Brings the links of products and extras to kLinks on both sides; the other roads go without them.
    void addLinks();
    void run(const QString& sql);
    void rawExport();
    void upload();
    void curlUpload() const;

    RawStore& m_store;
    QString m_shop; ///< the other side's file
    QuietServices m_services;
    QTemporaryDir m_folder;
    test::FtpServer m_server;
    bool m_added = false;
};

} // namespace bench
