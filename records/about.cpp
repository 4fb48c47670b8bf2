#include "records/about.h"

#ifndef OSTRANE_SITE_ADDRESS
#define OSTRANE_SITE_ADDRESS ""
#endif
#ifndef OSTRANE_CONTACT_ADDRESS
#define OSTRANE_CONTACT_ADDRESS ""
#endif

namespace ostrane {

std::string ProgramSiteAddress() { return OSTRANE_SITE_ADDRESS; }
std::string ProgramContactAddress() { return OSTRANE_CONTACT_ADDRESS; }

bool FrmAbout::CmdMail_Click() {
  if (!ProgramContactAddress().empty()) return true;
  program_.StrMsg = kNoContact;
  program_.ShowMessage(kOkOnly);
  return false;
}

void FrmAbout::CmdSite_Click() {
  const std::string address = ProgramSiteAddress();
  if (!address.empty()) {
    program_.host.shell.Open(address);
    return;
  }
  program_.StrMsg = kNoSite;
  program_.ShowMessage(kOkOnly);
}

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
