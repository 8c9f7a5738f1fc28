#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "documents/form.h"
#include "report/bars.h"

/// The commands of the program, one file each. Results go to `out` or to a file, remarks to
/// `notes`. A path "-" stands for standard input or output. The version is that of exchange
/// documents; without one, the document tells it. Errors are thrown as UserError.
namespace Commands {

/// How a command ended; the exit status of the program.
enum class Status { done = 0, findings = 1, error = 2 };

struct ShowOptions {
  enum class Format { table, json, csv };
  std::string path = "-";
  Format format = Format::table;
  std::optional<std::string> version;
};
Status show(const ShowOptions& options, std::ostream& out, std::ostream& notes);

struct ConvertOptions {
  std::string in;
  std::string out;
  Documents::Form form = Documents::Form::legacy;
  bool isStrict = false;
  std::optional<std::string> version;
};
Status convert(const ConvertOptions& options, std::ostream& notes);

struct CheckOptions {
  std::vector<std::string> paths = {"-"};
  std::optional<std::string> version;
};
Status check(const CheckOptions& options, std::ostream& out, std::ostream& notes);

struct DiffOptions {
  std::string first;
  std::string second;
  std::optional<std::string> version;
};
Status diff(const DiffOptions& options, std::ostream& out, std::ostream& notes);

struct PruneOptions {
  std::string in;
  std::string out;
  bool isGenerated = false;
  std::optional<std::string> usedBy;
  std::optional<std::string> version;
};
Status prune(const PruneOptions& options, std::ostream& notes);

struct ReportOptions {
  std::string in = "-";
  std::string out = "-";
  Report::Units units;
  std::optional<std::string> version;
};
Status report(const ReportOptions& options, std::ostream& notes);

}  // namespace Commands
