#include "records/about.h"

#ifndef OSTRANE_SITE_ADDRESS
#define OSTRANE_SITE_ADDRESS "https://ostrane.example.org/"
#endif

namespace ostrane {

std::string ProgramSiteAddress() { return OSTRANE_SITE_ADDRESS; }

void FrmAbout::Form_Load() {
  if (enableMain_) enableMain_(false);
  view_.LblVer = "Version " + program_.VersionProg + "\r\n" + kCopyright;
  view_.LblU = kLblU;
  view_.LblS = kLblS;
  view_.LblT = kLblT;
}

void FrmAbout::Form_Unload() {
  if (view_.unloaded) return;
  view_.unloaded = true;
  if (enableMain_) enableMain_(true);
}

}  // namespace ostrane
