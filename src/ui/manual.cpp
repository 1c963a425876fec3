#include "ui/manual.h"

#include <QDesktopServices>
#include <QUrl>

#include "platform/files.h"
#include "widgets/dialogs.h"

namespace {

namespace fs = std::filesystem;

/// Where an installation has it, and where an unpacked archive has it: beside the programs or their
/// folders. Empty when it is nowhere.
fs::path FindManual(const Directories& directories) {
  for (const fs::path& folder :
       {directories.deliveredFolder / "../doc/isp-writer/manual",
        directories.programFolder / "manual", directories.programFolder / "../manual"}) {
    fs::path page = (folder / "operator-manual.html").lexically_normal();
    std::error_code unreadable;
    if (page.is_absolute() && fs::is_regular_file(page, unreadable)) return page;
  }
  return {};
}

}  // namespace

void ShowManual(QWidget* window, const Directories& directories) {
  const fs::path page = FindManual(directories);
  if (page.empty()) {
    return ShowMessageBox(window, "The manual is not there.",
                          "It comes with the packages of this program, not with a build of it.");
  }
  const std::string name = PathText(page);
  if (!QDesktopServices::openUrl(QUrl::fromLocalFile(TextOf(name)))) {
    ShowMessageBox(window, "No program on this PC opens the manual.", "It is the file " + name);
  }
}
