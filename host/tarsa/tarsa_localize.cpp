#include "host/tarsa/tarsa_localize.h"

#include <cwchar>
#include <fstream>
#include <functional>
#include <unordered_map>

#include "host/tarsa/standin/tarsa_standin.h"
#include "host/zefkit/zk_string.h"

namespace {

std::unordered_map<int, std::wstring>& Translations() {
  static std::unordered_map<int, std::wstring> translations;
  return translations;
}

std::function<void(const wchar_t*, int)>& Observer() {
  static std::function<void(const wchar_t*, int)> observer;
  return observer;
}

std::wstring OrEmpty(const wchar_t* text) { return text ? text : L""; }

// The arguments a printf format takes, in order: each conversion's letter, and "*" for a width
// or precision given as an argument. "%%" takes none.
std::wstring Conversions(const wchar_t* format) {
  std::wstring conversions;
  for (const wchar_t* p = format; *p; ++p) {
    if (*p != L'%') continue;
    for (++p; *p && std::wcschr(L"-+ #0123456789.*hlLqjzt", *p); ++p) {
      if (*p == L'*') conversions += L'*';
    }
    if (*p == 0) break;
    if (*p != L'%') conversions += *p;
  }
  return conversions;
}

// Parses "id=text", unescaping "\n" and "\\". False for anything else.
bool ParseLine(const std::string& line, int& id, std::wstring& text) {
  const size_t equals = line.find('=');
  if (equals == std::string::npos || equals == 0 || equals > 9) return false;
  id = 0;
  for (size_t i = 0; i < equals; ++i) {
    if (line[i] < '0' || line[i] > '9') return false;
    id = id * 10 + (line[i] - '0');
  }
  if (id == 0) return false;
  const std::wstring raw = ZK_wString::FromUtf8(line.substr(equals + 1)).Text();
  text.clear();
  for (size_t i = 0; i < raw.size(); ++i) {
    if (raw[i] == L'\\' && i + 1 < raw.size() && (raw[i + 1] == L'n' || raw[i + 1] == L'\\')) {
      text += raw[++i] == L'n' ? L'\n' : L'\\';
    } else {
      text += raw[i];
    }
  }
  return true;
}

}  // namespace

CTarsaCommandOptionName::CTarsaCommandOptionName(const wchar_t* english_name,
                                                 const wchar_t* local_name)
    : m_english(OrEmpty(english_name)), m_local(local_name ? local_name : m_english.c_str()) {}

CTarsaCommandOptionValue::CTarsaCommandOptionValue(const wchar_t* english_value,
                                                   const wchar_t* local_value)
    : m_english(OrEmpty(english_value)), m_local(local_value ? local_value : m_english.c_str()) {}

const wchar_t* TsLocalizeString(const wchar_t* english, int string_id) {
  english = english ? english : L"";
  if (Observer()) Observer()(english, string_id);
  if (string_id == 0) return english;
  const auto found = Translations().find(string_id);
  if (found == Translations().end()) return english;
  // Texts are used as printf formats: a translation that asks for other arguments than the
  // English text would read arguments that are not there, so it is not used.
  if (Conversions(found->second.c_str()) != Conversions(english)) return english;
  return found->second.c_str();
}

CTarsaCommandOptionName TsLocalizeCommandOptionName(const wchar_t* english, int string_id) {
  return CTarsaCommandOptionName(english, TsLocalizeString(english, string_id));
}

CTarsaCommandOptionValue TsLocalizeCommandOptionValue(const wchar_t* english, int string_id) {
  return CTarsaCommandOptionValue(english, TsLocalizeString(english, string_id));
}

bool CTarsaStandIn::LoadTranslations(const std::string& path, std::string* error) {
  std::ifstream file(path, std::ios::binary);
  if (!file) {
    if (error) *error = "cannot read " + path;
    return false;
  }
  std::unordered_map<int, std::wstring> loaded;
  std::string line;
  for (int number = 1; std::getline(file, line); ++number) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.empty() || line[0] == '#') continue;
    int id = 0;
    std::wstring text;
    if (!ParseLine(line, id, text)) {
      if (error) *error = path + ":" + std::to_string(number) + ": expected id=text";
      return false;
    }
    loaded[id] = text;
  }
  for (auto& entry : loaded) Translations()[entry.first] = std::move(entry.second);
  return true;
}

void CTarsaStandIn::SetTranslation(int string_id, const wchar_t* text) {
  if (string_id != 0) Translations()[string_id] = OrEmpty(text);
}

void CTarsaStandIn::ClearTranslations() { Translations().clear(); }

void CTarsaStandIn::SetLocalizationObserver(std::function<void(const wchar_t*, int)> observer) {
  Observer() = std::move(observer);
}
