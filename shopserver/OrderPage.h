#pragma once
#include "shopserver/Catalogue.h"
#include "shopserver/OrderForm.h"
#include <QByteArray>
#include <QDateTime>
#include <QStringList>

/// The pages that customers see. All texts are escaped but the documents, which stand encoded in the
/// catalogue.
namespace shop {

/// `form` fills the fields, `problems` stands above them.
QByteArray orderPage(const Catalogue& catalogue, const OrderForm& form, const QStringList& problems,
                     const QDateTime& now, const QString& receipt);
QByteArray thanksPage(const Catalogue& catalogue, qint64 order);
/// Before the first upload.
QByteArray emptyPage();

} // namespace shop
