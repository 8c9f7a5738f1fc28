#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "documents/editing.h"

/// Documents and changes of them that somebody else chooses.
namespace RandomEdit {

/// One of so many, which are one or more.
using Choose = std::function<std::size_t(std::size_t)>;

/// A document of any form, with beddings and other content. Where it is `spelledOut`, beddings have
/// all attributes, spelled as an edit spells them, and no number or name twice.
std::string makeDocument(bool spelledOut, const Choose& choose);

/// Changes foundations to what the form of their document can hold.
void changeValues(Editing::Draft& draft, Documents::Form form, const Choose& choose);

/// Changes, adds and removes foundations, and another may become current.
void changeAll(Editing::Draft& draft, Documents::Form form, const Choose& choose);

/// How the foundations of `result` differ from those wished for; empty when they do not.
std::string findDifference(const Editing::Wish& wish, Documents::Document& result);

/// The bytes of a document without the elements that tell of foundations, the tags of what holds
/// these, and white space.
std::string strip(Documents::Document& document);

}  // namespace RandomEdit
