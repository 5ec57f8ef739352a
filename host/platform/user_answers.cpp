#include "host/platform/user_answers.h"

#include "host/platform/standin/scripted_answers.h"

namespace {

IUserAnswers* g_installed_answers = nullptr;

}  // namespace

IUserAnswers& UserAnswers() {
  return g_installed_answers ? *g_installed_answers : TsScriptedAnswers();
}

void SetUserAnswers(IUserAnswers* answers) { g_installed_answers = answers; }
