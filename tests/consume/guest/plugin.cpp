// The plugin: what it exports has nothing of KvFound in its type, so that two plugins may have two
// versions of it.
#include "found/foundation_manager.h"
#include "kv/xml_error.h"

extern "C" __attribute__((visibility("default"))) double largestStiffness(const char* path) {
  try {
    Found::FoundationManager model;
    if (!model.readXml(path)) return -1.0;
    model.updateFoundationMaximum();
    return model.getMaxFoundationValue();
  } catch (const KvXmlError&) {
    return -2.0;
  }
}
