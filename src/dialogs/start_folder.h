#pragma once

#include <string>

namespace quorbel {

/// The folder that a dialog for files shows first: the one of the open lattice, so that files go
/// where the user keeps them and not where the viewer works.
///
/// `latticeFolder` is the lattice's folder as the viewer was given it, relative to the absolute
/// path `workingFolder` or absolute, or empty while none has been opened. A folder that is the
/// working folder by its absolute path is no folder of the user's: somebody put the lattice among
/// the viewer's work files. In both cases this is `otherwise`. Returns an absolute path without "."
/// and ".."; whether there is such a folder is not looked at.
std::string startFolder(const std::string& latticeFolder, const std::string& workingFolder,
                        const std::string& otherwise);

}  // namespace quorbel
