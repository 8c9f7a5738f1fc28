#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "exchange/messengers.h"
#include "kv/xml_n.h"
#include "support/foundations.h"
#include "support/newer_documents.h"

/// Exchange documents as texts.
namespace ExchangeTest {

using TestSupport::addFoundation;
using TestSupport::describe;
using TestSupport::describeValues;
using TestSupport::parse;
using TestSupport::print;
using TestSupport::setDispArea;
using TestSupport::setDispLine;
using TestSupport::setRotLine;

constexpr const char* currentVersion = "2.0";

/// A document with this inside its root, "Exchange".
std::string makeDocument(const std::string& inside);

/// How a document of these elements below "Exchange" is printed, one element a line.
std::string makePrinted(const std::vector<std::string>& elements);

/// What the manager writes into a new document with the root "Exchange".
std::string write(const Found::FoundationManager& manager, const std::string& version);

/// Lets the manager read the root of this document.
void readText(Found::FoundationManager& manager, const std::string& text,
              const std::string& version, Found::Umo::ReadMessenger* messenger = nullptr);

/// A manager, and a messenger that hears what is read into it.
class ReadingTest : public testing::Test {
 protected:
  /// Reads a document with this inside its root.
  void read(const std::string& inside, const std::string& version = currentVersion) {
    readText(manager, makeDocument(inside), version, &messenger);
  }

  Found::FoundationManager manager;
  RecordingMessenger messenger;
};

}  // namespace ExchangeTest
