#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "recording.h"

namespace Recording {
struct TreeAccess;
}

/// An attribute: a name and a text. One of "?5?7" reads as 0 and yet has the values 5 and 7.
class KvXmlAttributeData {
 public:
  KvXmlAttributeData(const KvXmlAttributeData&) = delete;
  KvXmlAttributeData& operator=(const KvXmlAttributeData&) = delete;

  int getInteger() const;
  double getDouble() const;
  const std::string& getData() const;
  bool checkValue(int value) const;

 private:
  friend struct Recording::TreeAccess;
  KvXmlAttributeData(const std::string& attributeName, const std::string& attributeText);

  std::string name;
  std::string text;
  Recording::Counted counted{"KvXmlAttributeData"};
};

/// An element; owns its attributes and its children.
class KvXmlData {
 public:
  KvXmlData(const std::string& elementName, KvXmlData* parentElement);
  ~KvXmlData();
  KvXmlData(const KvXmlData&) = delete;
  KvXmlData& operator=(const KvXmlData&) = delete;

  KvXmlData* findTree(const std::string& wanted, bool flag);
  std::vector<KvXmlData*>& getChildren();
  const std::string& getName() const;
  KvXmlAttributeData* findAttribute(const std::string& wanted) const;
  void addChild(KvXmlData* child);
  void setAttribute(const std::string& key, int value, bool flag);
  void setAttribute(const std::string& key, const std::string& value, bool flag);

 private:
  friend struct Recording::TreeAccess;
  explicit KvXmlData(const std::string& elementName);

  std::string name;
  KvXmlData* parent = nullptr;
  std::vector<std::unique_ptr<KvXmlAttributeData>> attributes;
  std::vector<KvXmlData*> children;
  Recording::Counted counted{"KvXmlData"};
};

/// A document with a cursor.
class KvXmlTree {
 public:
  KvXmlTree();
  /// Parses one element a line: one space a level, the name, then key=value for each attribute;
  /// neither can hold a space. Empty lines are passed over.
  explicit KvXmlTree(std::istream& in);
  virtual ~KvXmlTree();
  KvXmlTree(const KvXmlTree&) = delete;
  KvXmlTree& operator=(const KvXmlTree&) = delete;

  KvXmlData* findRoot(const std::string& name, bool flag) const;
  KvXmlData* open(const std::string& name, bool flag);
  void close();
  void flush();
  void setAttribute(const std::string& name, double value);
  KvXmlData* getCurrent() const;
  void setCurrent(KvXmlData* element);
  /// Prints the form that is parsed.
  void putToStream(std::ostream& out) const;

 private:
  friend struct Recording::TreeAccess;

  std::unique_ptr<KvXmlData> root;
  KvXmlData* current = nullptr;
  Recording::Counted counted{"KvXmlTree"};
};
