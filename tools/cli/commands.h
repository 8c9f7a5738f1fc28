#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "comparing/merging.h"
#include "documents/document.h"
#include "documents/form.h"
#include "foundations/conversion.h"
#include "foundations/matching.h"
#include "foundations/selection.h"
#include "foundations/units.h"
#include "notes.h"

/// The commands of the program, one file each. Results go to `out` or to a file, remarks to
/// `notes`. A path "-" stands for standard input or output. The version is that of exchange
/// documents; without one, the document tells it. Errors are thrown as UserError.
namespace Commands {

/// How a command ended; the exit status of the program.
enum class Status { done = 0, findings = 1, error = 2 };

struct ShowOptions {
  enum class Format { table, json, csv };
  std::vector<std::string> paths = {"-"};
  Format format = Format::table;
  Selection selection;
  Units units;
  Documents::ReadOptions reading;
};
Status show(const ShowOptions& options, std::ostream& out, Notes& notes);

struct ConvertOptions {
  std::string in;
  std::string out;
  Documents::Form form = Documents::Form::legacy;
  bool isStrict = false;
  bool showsAll = false;  // losses, however many
  Units units;            // of what is written
  std::optional<Scaling::Conversion> conversion;
  Documents::ReadOptions reading;
};
Status convert(const ConvertOptions& options, Notes& notes);

struct CheckOptions {
  enum class Format { text, json, sarif };
  std::vector<std::string> paths = {"-"};
  Format format = Format::text;
  Documents::ReadOptions reading;
};
Status check(const CheckOptions& options, std::ostream& out, Notes& notes);

struct DiffOptions {
  enum class Format { text, json, html };
  std::string first;
  std::string second;
  std::string out = "-";
  std::vector<Matching::Key> keys = {Matching::Key::name, Matching::Key::number};
  double relative = 0.0;
  Format format = Format::text;
  Documents::ReadOptions reading;
};
Status diff(const DiffOptions& options, Notes& notes);

struct PruneOptions {
  std::string in;
  std::string out;
  bool isGenerated = false;
  std::optional<std::string> usedBy;
  bool ignoresMissing = false;  // lines of that list that fit nothing
  bool keepsNumbers = false;
  Documents::ReadOptions reading;
};
Status prune(const PruneOptions& options, Notes& notes);

struct MergeOptions {
  std::vector<std::string> in;
  std::string into;
  std::optional<std::string> out;  // `into` when left out
  Comparing::OnClash onClash = Comparing::OnClash::refuse;
  bool isDryRun = false;
  bool showsAll = false;  // losses, however many
  Documents::ReadOptions reading;
};
Status merge(const MergeOptions& options, std::ostream& out, Notes& notes);

/// A field and what it is given, such as "areaZ=16000".
using Assignments = std::vector<std::string>;

struct SetOptions {
  std::string path;
  Selection selection;
  Assignments assignments;
  Documents::ReadOptions reading;
};
/// Changes fields of the foundations that are selected.
Status set(const SetOptions& options, std::ostream& out, Notes& notes);
/// Removes those that are selected.
Status remove(const SetOptions& options, std::ostream& out, Notes& notes);

struct AddOptions {
  std::string path;
  std::string name;
  Assignments assignments;
  Documents::ReadOptions reading;
};
Status add(const AddOptions& options, std::ostream& out, Notes& notes);

struct ReportOptions {
  std::vector<std::string> in = {"-"};
  std::string out = "-";  // a folder, if there are several
  Selection selection;
  Units units;
  Documents::ReadOptions reading;
};
Status report(const ReportOptions& options, Notes& notes);

}  // namespace Commands
