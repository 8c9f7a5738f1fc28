#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "documents/document.h"
#include "documents/editing.h"
#include "documents/losses.h"
#include "kv/xml_position.h"

namespace Comparing {

/// What becomes of a foundation whose number another one has in the document that it comes into, or
/// whose name.
enum class OnClash {
  refuse,
  rename,    // it comes under a free name where its own is taken
  renumber,  // it comes under a free number where its own is taken
  skip,      // it does not come
  replace    // it takes the place, name and number of the other one
};

/// A foundation that does not come, and why. Texts are safe to show.
struct Refusal {
  std::string file;        // of the foundation, as messages call it
  KvXmlPosition position;  // in the file
  std::string foundation;  // as messages call it
  std::string sentence;
};

/// Takes the foundations of documents over into the draft of another one. Those that have number
/// and name alike, or the one that the document tells, change there, in the fields that both
/// documents tell and the parts that come; others are added. Nothing is removed.
class Merger {
 public:
  /// The documents must outlive it.
  Merger(Documents::Document& target, Editing::Draft& draft, OnClash onClash);

  void merge(Documents::Document& source);

  /// Clashes that were refused. The sentence tells the other foundation and its place.
  const std::vector<Refusal>& getClashes() const { return clashes; }
  /// What the rule left out.
  const std::vector<Refusal>& getLeftOut() const { return leftOut; }
  /// What does not come over since the other form has no place for it.
  const std::vector<Losses::Loss>& getLosses() const { return losses; }

 private:
  using Foundation = Found::Foundation;
  struct Place {
    std::string file;  // as messages call it
    KvXmlPosition position;
  };

  void take(Foundation& source);
  void resolve(Foundation& source, Foundation* byNumber, Foundation* byName);
  void change(Foundation& target, Foundation& source);
  void add(Foundation& source, int number, const std::string& name);
  void replace(Foundation& target, Foundation& source);
  void refuse(const Foundation& source, const Foundation& other);
  Refusal makeRefusal(const Foundation& source, std::string sentence) const;
  void addPlaces(Documents::Document& document);
  void addParts(Documents::Document& source);
  void addSheet(Documents::Document& source);
  bool holds(const Fields::Field& field) const;
  bool tells(const Foundation& source, const Fields::Field& field) const;
  bool comes(std::string_view field, Foundation& source) const;
  Foundation* find(int number) const;
  Foundation* find(const std::string& name) const;
  std::string findDefaultName(const std::string& name) const;
  std::string findFreeName(const std::string& name) const;

  Documents::Form targetForm;
  std::optional<Spreadsheets::FieldSet> targetColumns;   // of a table
  Documents::Form sourceForm = Documents::Form::legacy;  // of the document at hand
  Found::FoundationManager& target;
  OnClash rule;
  std::map<const Foundation*, Place> places;
  std::map<int, Foundation*> numbers;  // the first of each
  std::map<std::string, Foundation*> names;
  std::set<const Foundation*> withArea;  // that tell a stiffness of it
  std::set<const Foundation*> withLine;
  std::map<const Foundation*, Spreadsheets::Origin> rows;  // of tables and data
  std::set<const Foundation*> taken;  // that the document at hand has changed or added
  std::vector<Refusal> clashes;
  std::vector<Refusal> leftOut;
  std::vector<Losses::Loss> losses;
};

}  // namespace Comparing
