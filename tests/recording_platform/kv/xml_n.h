#pragma once

#include <memory>
#include <string>
#include <vector>

#include "kv/nullable.h"
#include "recording.h"

namespace Recording {
struct DataAccess;
}

namespace KvXmlN {

/// An attribute: a name and a text.
class AttributeData {
 public:
  AttributeData(const AttributeData&) = delete;
  AttributeData& operator=(const AttributeData&) = delete;

  const std::string& getData() const;

 private:
  friend struct Recording::DataAccess;
  AttributeData(const std::string& attributeName, const std::string& attributeText);

  std::string name;
  std::string text;
  Recording::Counted counted{"AttributeData"};
};

/// An element; owns its attributes and its children.
class Data {
 public:
  explicit Data(const std::string& elementName);
  ~Data();
  Data(const Data&) = delete;
  Data& operator=(const Data&) = delete;

  const std::vector<Data*>& getChildren() const;
  const std::string& getName() const;
  const AttributeData* findAttribute(const std::string& wanted) const;
  double getAttributeDouble(const std::string& wanted) const;
  Data* createChild(const std::string& childName);
  void setAttribute(const std::string& key, const std::string& value, bool flag);
  void setAttribute(const std::string& key, int value, bool flag);
  void setAttribute(const std::string& key, double value);
  void setAttribute(const std::string& key, double value, const char* format);

 private:
  friend struct Recording::DataAccess;

  std::string name;
  std::vector<std::unique_ptr<AttributeData>> attributes;
  std::vector<Data*> children;
  Recording::Counted counted{"Data"};
};

/// Reads attributes as values.
struct AttributeIn {
  static kvt::Nullable<std::string> readString(const Data& data, const std::string& name);
};

}  // namespace KvXmlN
