#include "host/tarsa/standin/tarsa_prompts.h"

#include <cmath>
#include <cwchar>

#include "host/tarsa/tarsa_app.h"
#include "host/tarsa/tarsa_get.h"

bool TsParseOffset(const std::wstring& text, ZK_3dVector& offset) {
  double xyz[3];
  int consumed = 0;
  if (std::swscanf(text.c_str(), L"%lf,%lf,%lf%n", &xyz[0], &xyz[1], &xyz[2], &consumed) != 3 ||
      consumed != static_cast<int>(text.size())) {
    return false;
  }
  for (double value : xyz) {
    if (!std::isfinite(value)) return false;
  }
  offset = {xyz[0], xyz[1], xyz[2]};
  return true;
}

std::vector<const CTarsaObject*> TsAskForObjects(const wchar_t* prompt, bool preselect) {
  CTarsaGetObject get;
  get.SetCommandPrompt(prompt);
  get.EnablePreSelect(preselect);
  std::vector<const CTarsaObject*> objects;
  if (get.GetObjects(1, 0) != CTarsaGet::object) return objects;
  for (int i = 0; i < get.ObjectCount(); ++i) objects.push_back(get.Object(i).Object());
  return objects;
}

namespace {

// Three numbers: 1, or 0 for Enter alone when `enter_ends`, or -1 when cancelled.
int AskForXyz(const wchar_t* prompt, bool enter_ends, ZK_3dVector& xyz) {
  for (;;) {
    CTarsaGetString get;
    get.SetCommandPrompt(prompt);
    get.AcceptNothing(enter_ends);
    const CTarsaGet::result answer = get.GetString();
    if (answer == CTarsaGet::nothing) return 0;
    if (answer != CTarsaGet::string) return -1;
    if (TsParseOffset(get.String(), xyz)) return 1;
    TarsaApp().Print(L"Type three numbers: x,y,z.\n");
  }
}

}  // namespace

bool TsAskForXyz(const wchar_t* prompt, ZK_3dVector& xyz) {
  return AskForXyz(prompt, false, xyz) == 1;
}

namespace {

int AskForPoint(const wchar_t* prompt, bool enter_ends, ZK_3dPoint& point) {
  ZK_3dVector xyz;
  const int answer = AskForXyz(prompt, enter_ends, xyz);
  if (answer == 1) point = {xyz.x, xyz.y, xyz.z};
  return answer;
}

}  // namespace

bool TsAskForPoint(const wchar_t* prompt, ZK_3dPoint& point) {
  return AskForPoint(prompt, false, point) == 1;
}

int TsAskForNextPoint(const wchar_t* prompt, ZK_3dPoint& point) {
  return AskForPoint(prompt, true, point);
}

bool TsAskForNumber(const wchar_t* prompt, double& number) {
  for (;;) {
    CTarsaGetString get;
    get.SetCommandPrompt(prompt);
    if (get.GetString() != CTarsaGet::string) return false;
    const std::wstring text = get.String();
    int consumed = 0;
    if (std::swscanf(text.c_str(), L"%lf%n", &number, &consumed) == 1 &&
        consumed == static_cast<int>(text.size()) && std::isfinite(number)) {
      return true;
    }
    TarsaApp().Print(L"Type a number.\n");
  }
}

bool TsAskForName(const wchar_t* prompt, ZK_wString& name) {
  CTarsaGetString get;
  get.SetCommandPrompt(prompt);
  if (get.GetString() != CTarsaGet::string) return false;
  name = get.String();
  return true;
}
