#pragma once

#include <string>

#include "checks/findings.h"
#include "documents/element.h"
#include "documents/vocabulary.h"

/// What is wrong with attributes, whatever the form of the document.
namespace Checks {

/// Judges every attribute of `element` but numbers and names.
void checkAttributes(const Documents::Element& element, const Documents::ElementWord& known,
                     Findings& findings);

/// Judges the children of `element`, which should have none: it holds everything in attributes.
void checkHasNoChildren(const Documents::Element& element, Findings& findings);

/// Why the attribute, which is not absent, cannot be read as a whole number.
std::string describeNonInteger(const Documents::Element& element, const std::string& name);

}  // namespace Checks
