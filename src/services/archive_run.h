#ifndef CUSTOMSCONV_SERVICES_ARCHIVE_RUN_H_
#define CUSTOMSCONV_SERVICES_ARCHIVE_RUN_H_

#include <string_view>

#include "services/environment.h"

namespace customsconv {

// Asks whether the tables of `folder` are to be packed for the customs post, and starts the
// batch file "Utils\arctmr.bat" of the base folder for it without waiting. A new archive takes
// the next archive number and advances it; otherwise the last archive is written again. A batch
// file that does not start is told with a message, and the number stays.
void ArchiveForTpo(std::string_view folder, bool new_archive, Environment& environment);

}  // namespace customsconv

#endif  // CUSTOMSCONV_SERVICES_ARCHIVE_RUN_H_
