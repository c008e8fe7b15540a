#pragma once

#include "companyfile/element.h"
#include "companyfile/lists.h"

#include <string_view>

namespace companyfile {

/// True for an element that refers to a list entry ("TermsRef").
bool isReference(const Element& element);

/// Replaces every reference below `fields` by the ListID of the entry that it names.
/// @param record  what is being built, as messages call it: "Invoice", "Invoice line".
/// @throws StatusError 3140 for a name or id that no entry of the right kind has (3130 for a
/// parent), 3000 for
///         an id that has not the form of one.
void resolveReferences(Lists& lists, Element& fields, std::string_view record);

/// The entry that a resolved reference child of `fields` points to; null when there is none.
Entry* referenced(Lists& lists, const Element& fields, std::string_view path);

/// Puts the full name of the entry beside each ListID, as answers show references.
void showReferences(Lists& lists, Element& fields);

/// What a reference of this name may point to: words of kinds, the first naming the name space;
/// empty: nothing here.
std::string_view kindsOfReference(std::string_view field);

}  // namespace companyfile
