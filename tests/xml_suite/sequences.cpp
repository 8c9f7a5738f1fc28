#include "xml_suite/sequences.h"

#include <algorithm>
#include <future>
#include <sstream>
#include <utility>

#include "kv/xml_error.h"
#include "kv/xml_n.h"
#include "xml_suite/judgement.h"

namespace XmlSuite {
namespace {

constexpr const char* marks[] = {"[",   "]",    ">",  "<!E ",     "\" ",      "' ",  "<!--",
                                 "-->", "<?p ", "?>", " SYSTEM ", " PUBLIC ", "%p;", "&x;"};
constexpr std::size_t mostFaults = 20;

struct Frame {
  std::string before;
  std::string behind;
};

const std::string root = "<r a='&lt;'>&amp;</r>";
// To be accepted only where the document type hides a part of it, and so never.
const std::string malformedRoot = "<r a=\"&x;\" b='1'>&x; &</r>";

/// All sequences within one frame that start alike.
class Walk {
 public:
  explicit Walk(const Frame& walked) : frame(walked) {}

  SequencesResult run(const std::string& start, std::size_t length) {
    extend(start, length);
    return std::move(result);
  }

 private:
  void extend(const std::string& text, std::size_t length) {
    judgeText(frame.before + text + frame.behind);
    if (length == 0) return;
    for (const char* mark : marks) extend(text + mark, length - 1);
  }

  void judgeText(const std::string& text) {
    ++result.texts;
    // Nearly all are refused, and then nothing more is to be seen.
    if (!isAccepted(text)) return;
    ++result.accepted;
    const Judgement judgement = judge(text);
    if (!judgement.deviations.empty() && result.faults.size() < mostFaults)
      result.faults.push_back(list(judgement.deviations) + ": " + text);
  }

  bool isAccepted(const std::string& text) {
    in.clear();
    in.str(text);
    try {
      const KvXmlN::Document document(in);
      return true;
    } catch (const KvXmlError&) {
      return false;
    }
  }

  const Frame& frame;
  std::istringstream in;
  SequencesResult result;
};

void add(SequencesResult& all, const SequencesResult& some) {
  all.texts += some.texts;
  all.accepted += some.accepted;
  all.faults.insert(all.faults.end(), some.faults.begin(), some.faults.end());
}

SequencesResult walk(const Frame& frame, std::size_t length) {
  SequencesResult all = Walk(frame).run("", 0);
  if (length == 0) return all;
  std::vector<std::future<SequencesResult>> parts;
  for (const char* mark : marks)
    parts.push_back(std::async(
        std::launch::async, [&frame, mark, length] { return Walk(frame).run(mark, length - 1); }));
  for (std::future<SequencesResult>& part : parts) add(all, part.get());
  return all;
}

}  // namespace

SequencesResult judgeSequences(std::size_t length) {
  const std::size_t shorter = std::max<std::size_t>(length, 1) - 1;
  SequencesResult all = walk({"<!DOCTYPE r ", root}, length);
  add(all, walk({"<!DOCTYPE r ", malformedRoot}, shorter));
  add(all, walk({"<!DOCTYPE r [", "]>" + root}, shorter));
  return all;
}

}  // namespace XmlSuite
