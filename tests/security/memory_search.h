#pragma once

#include <initializer_list>
#include <set>
#include <string>
#include <string_view>

namespace testing_support {

/// A text written from its end to its beginning, so that writing it down in a test does not put it
/// into the memory that is searched.
using Backwards = std::string_view;

/// Which of the texts stand in the memory that this process can write: heap, stacks and globals?
std::set<Backwards> inMemory(std::initializer_list<Backwards> texts);

/// Puts the text into `field` and leaves no other copy.
void typeInto(std::string& field, Backwards text);

}  // namespace testing_support
