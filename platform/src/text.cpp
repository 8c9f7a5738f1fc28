#include "kv/text.h"

namespace KvText {

std::string Load(unsigned id) {
  switch (id) {
    case 7469:
      return "No failure";
    case 7470:
      return "Fails in y under tension";
    case 7471:
      return "Fails in y under compression";
    case 7472:
      return "Fails in z under tension";
    case 7473:
      return "Fails in z under compression";
    case 7474:
      return "Fails in y and z under tension";
    case 7475:
      return "Fails in y under compression, in z under tension";
    case 7476:
      return "Fails in y under tension, in z under compression";
    case 7477:
      return "Fails in y and z under compression";
    default:
      return {};
  }
}

}  // namespace KvText
