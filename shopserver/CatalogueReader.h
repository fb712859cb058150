#pragma once
#include "shopserver/Catalogue.h"
#include <QByteArray>
#include <stdexcept>

namespace shop {

/// What is wrong with an uploaded file; what() is German.
struct CatalogueError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Reads the desk's database. The bytes come from outside: whatever they are, they are only read, in bounded
/// time and memory, and a Catalogue or a CatalogueError comes of them.
Catalogue readCatalogue(QByteArray file);

} // namespace shop
