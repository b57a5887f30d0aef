#include "zelwbr3/framework/modTopWarning.h"

#include "zelwbr3/ZELLib3/Codes.h"
#include "zelwbr3/framework/Given.h"
#include "zelwbr3/framework/modCmdEnum.h"

namespace ZELWbr3::modTopWarning {

void Show(ZELHTMLForm& oForm, ZELLib3::Database& oDatabase) {
  using modCmdEnum::CommandLink;
  const auto oState = Given(oDatabase.StateInfo());
  const Long lStatus = oState->Status();
  const bool bRunning = lStatus == ZELLib3::Status::Admin || lStatus == ZELLib3::Status::AdminToOnline ||
                        lStatus == ZELLib3::Status::Online;
  if (!bRunning || !oState->AnyAreaFull()) {
    oForm.HideTopWarning();
  } else if (oState->DataFull()) {
    oForm.ShowTopWarning("Data Area Full", "To extend the data area add a data volume. (Instance->Configuration->" +
                                               CommandLink(modCmdEnum::cmdVolumes, "Volumes") + ")");
  } else if (oState->LogFull()) {
    oForm.ShowTopWarning("Log Area Full",
                         "To empty the log area make a log backup or turn AutoLog on. (Instance->Backup->" +
                             CommandLink(modCmdEnum::cmdBackupWizard, "Backup Wizard") + ")");
  }
}

}  // namespace ZELWbr3::modTopWarning
