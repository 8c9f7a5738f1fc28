#include "kv/text.h"

#include "recording.h"

namespace KvText {

std::string Load(unsigned id) {
  Recording::call("Load " + std::to_string(id));
  return "text " + std::to_string(id);
}

}  // namespace KvText
