#pragma once

#include "util/text_codec.h"

#include <string>
#include <string_view>

#include <QString>

namespace platform {

/// Text of the link (code page 1252) as the toolkit has it, and back.
inline QString toQt(std::string_view text) {
    return QString::fromStdString(util::toUtf8(text));
}
inline std::string fromQt(const QString& text) {
    return util::fromUtf8(text.toStdString());
}

}  // namespace platform
