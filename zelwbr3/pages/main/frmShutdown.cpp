#include "zelwbr3/pages/main/frmShutdown.h"

#include "zelwbr3/framework/PageController.h"

namespace ZELWbr3 {

frmShutdown::Choice frmShutdown::Shutdown(const std::string& sInstanceName) {
  using Answer = Dialog::Answer;
  Dialog oDialog{
      .Name = "frmShutdown",
      .Caption = "Confirm Database Shut Down",
      .Picture = MessageBox::Icon::Question,
      .Text = "Are you sure you want to shut down the database instance '" + sInstanceName +
              "'?\n\n"
              "To wait until all running transactions are finished choose 'OK'. \n"
              "To break off all running transactions choose 'Quick'.",
      .Buttons = {{Answer::OK, "cmdOK", "OK"},
                  {Answer::Quick, "cmdQuick", "&Quick"},
                  {Answer::Cancel, "cmdCancel", "&Cancel"}},
      .DefaultButton = 2,
  };
  const Answer eAnswer = m_oDialogBox.Show(oDialog);
  return {eAnswer == Answer::Quick, eAnswer == Answer::Cancel};
}

}  // namespace ZELWbr3
