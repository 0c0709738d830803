// The comment writer's view of the placeholder expansion, which lives in
// placeholder/ because the IPTC sheet expands the same placeholders.
#pragma once

#include "comment_limits.h"
#include "placeholder/placeholders.h"

namespace comment {

using placeholder::ExpandPlaceholders;
using placeholder::PlaceholderContext;

}  // namespace comment
