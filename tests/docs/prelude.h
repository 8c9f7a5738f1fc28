#pragma once

#undef NDEBUG  // samples say by assert() what holds

#include <algorithm>
#include <cassert>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "found/bedding_reader.h"
#include "found/bedding_writer.h"
#include "found/foundation.h"
#include "found/foundation_manager.h"
#include "found/foundation_user.h"
#include "found/kvml_writer.h"
#include "found/read_messenger.h"
#include "kv/vector3d.h"
#include "kv/version_text.h"
#include "kv/xml_error.h"
#include "kv/xml_n.h"
#include "kv/xml_tree.h"

/// What a sample that is no program of its own finds around it.
struct Host {
  Host() {
    if (!manager.readXml("examples/model.xml")) throw std::runtime_error("there is no model");
  }

  Found::FoundationManager manager;  // the foundations of examples/model.xml
};
