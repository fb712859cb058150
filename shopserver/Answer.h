#pragma once
#include <QByteArray>
#include <httplib.h>

namespace shop {

inline constexpr char kHtml[] = "text/html; charset=utf-8";
inline constexpr char kText[] = "text/plain; charset=utf-8";

inline void answer(httplib::Response& response, const QByteArray& content, const char* type = kHtml,
                   int status = 200) {
    response.status = status;
    response.set_content(content.constData(), size_t(content.size()), type);
}

} // namespace shop
