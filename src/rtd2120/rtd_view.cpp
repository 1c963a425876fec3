#include "rtd2120/rtd_view.h"

namespace tongxun2120 {
namespace {

void AppendRed(RtdView& view, const std::string& text) {
  view.SetStatusText(view.StatusText() + text);
  view.SetStatusRed(true);
  view.RefreshStatus();
}

}  // namespace

void AppendLine(RtdView& view, std::string_view message) {
  view.SetStatusText(view.StatusText() + std::string(message) + "\r\n");
  view.RefreshStatus();
}

void AppendRedLine(RtdView& view, std::string_view message) {
  AppendRed(view, std::string(message) + "\r\n");
}

void AppendLinkError(RtdView& view) { AppendRed(view, kLinkError); }

void AppendLinkErrorLine(RtdView& view) { AppendRedLine(view, kLinkError); }

}  // namespace tongxun2120
