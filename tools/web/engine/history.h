#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "row.h"

namespace Engine {

/// Rows, and the steps in which they changed.
class History {
 public:
  explicit History(Rows first) : rows(std::move(first)) {}

  const Rows& getRows() const { return rows; }

  /// Makes the rows those that are given, as one step; `label` tells what it does.
  void change(std::string label, Rows changed);

  /// What undo() takes back and redo() does again; empty where there is nothing.
  std::string getUndoLabel() const { return done.empty() ? "" : done.back().label; }
  std::string getRedoLabel() const { return undone.empty() ? "" : undone.back().label; }

  /// Return the first row to look at and how many; there must be a step.
  struct Span {
    std::size_t first;
    std::size_t count;
  };
  Span undo();
  Span redo();

  void markSaved() { saved = done.size(); }
  bool isSaved() const { return saved == done.size(); }
  /// Another number after each change, so that what was made of the rows is known to be old.
  std::size_t getVersion() const { return version; }

 private:
  /// Rows from a place on that others replace.
  struct Step {
    std::string label;
    std::size_t first;
    Rows before;
    Rows after;
  };

  static Step makeStep(std::string label, const Rows& before, const Rows& after);
  void makeRoom(const Rows& gone, const Rows& coming);
  Span replace(std::size_t first, const Rows& gone, const Rows& coming);

  Rows rows;
  std::vector<Step> done;
  std::vector<Step> undone;
  std::size_t saved = 0;  // how many steps were done then
  std::size_t version = 0;
};

}  // namespace Engine
