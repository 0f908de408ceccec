#pragma once

// What must hold of a lattice file as a whole.

#include <string>
#include <vector>

#include "formats/slf_file.h"

namespace quorbel {

/// Puts `nodes`, which come in the order of the file and none of them twice, into `file.nodes` by
/// their index, and checks what parseSlf promises of nodes, links and header. `lastLine` is the
/// number of the file's last line.
///
/// Returns "" on success, else one line for the user that begins with the line it is about.
std::string bringTogether(SlfFile& file, const std::vector<SlfRecord>& nodes, int lastLine);

}  // namespace quorbel
