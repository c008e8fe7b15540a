#pragma once

#include "companyfile/element.h"

namespace companyfile {

/// Brings the elements of an answer's record (or line) into the order of the wire, by the record's
/// name, and drops what no answer has. A record of another name stays as it is.
void arrange(Element& record);

}  // namespace companyfile
