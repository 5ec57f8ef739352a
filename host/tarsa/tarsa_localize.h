// The host's localisation. Every text a plug-in shows is handed over with its English form and a
// numeric string id; the host shows the translation it has for that id, or the English text.
// Option names and values carry both forms, so that macros can always use the English ones.
// English by default; a translation table replaces texts by id (docs/localization.md), loaded by
// the host program.
#pragma once

#include <string>

class CTarsaCommandOptionName {
 public:
  CTarsaCommandOptionName(const wchar_t* english_name, const wchar_t* local_name);
  const wchar_t* EnglishName() const { return m_english.c_str(); }
  const wchar_t* LocalName() const { return m_local.c_str(); }

 private:
  std::wstring m_english;
  std::wstring m_local;
};

// The value shown after an option name; both null gives the empty value of a plain option.
class CTarsaCommandOptionValue {
 public:
  CTarsaCommandOptionValue(const wchar_t* english_value, const wchar_t* local_value);
  const wchar_t* EnglishValue() const { return m_english.c_str(); }
  const wchar_t* LocalValue() const { return m_local.c_str(); }
  bool IsEmpty() const { return m_english.empty() && m_local.empty(); }

 private:
  std::wstring m_english;
  std::wstring m_local;
};

// The text to show for `english` under `string_id`. The host keeps what it returns until the
// translations change. Id 0 is never translated, and neither is a text whose translation has
// other printf conversions than the English text (the text may serve as a format).
const wchar_t* TsLocalizeString(const wchar_t* english, int string_id);
CTarsaCommandOptionName TsLocalizeCommandOptionName(const wchar_t* english, int string_id);
CTarsaCommandOptionValue TsLocalizeCommandOptionValue(const wchar_t* english, int string_id);
