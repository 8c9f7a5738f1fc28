#pragma once

#include <string>

#include "kv/export.h"

namespace KvText {

/// The display text for `id`, in English: 7469 to 7477 name the directions in which a bedding
/// fails. Empty for any other id.
KV_API std::string Load(unsigned id);

}  // namespace KvText
