#include "command/import_preview_command.h"

#include <unordered_map>

#include "command/flow_prompts.h"
#include "events/imported_name.h"
#include "host/tarsa/tarsa_app.h"
#include "host/tarsa/tarsa_file_preview.h"
#include "operations/object_wrapper.h"
#include "plugin/korvo_plugin.h"

namespace {

const ZK_UUID kCommandId = {
    0xD7E2A915, 0x3C48, 0x4F6B, {0x8A, 0x01, 0x5B, 0x9E, 0x6C, 0x2D, 0x7F, 0x34}};

// How many of the file's objects carry each stance, by stance id.
std::unordered_map<ZK_UUID, int, ZK_UuidHash> CountCarriers(const CTarsaFilePreview& file) {
  std::unordered_map<ZK_UUID, int, ZK_UuidHash> carriers;
  for (int i = 0; i < file.ObjectCount(); ++i) {
    const CKorvoUserData* record = CKorvoObjectWrapper(&file.Object(i)).GetRecord();
    if (record == nullptr) continue;
    for (INT_PTR e = 0; e < record->m_entries.GetSize(); ++e)
      ++carriers[record->m_entries[e]->m_id];
  }
  return carriers;
}

// Reads the file's stance table into `table`: false, with the reason printed, when the file has
// no stances or a block this plug-in cannot read.
bool ReadFileTable(const CTarsaFilePreview& file, CKorvoDocData& table) {
  const std::vector<unsigned char>* block = file.PlugInData(KorvoPlugIn().PlugInID());
  if (block == nullptr) {
    PrintMessage(L"The file has no stances.\n", 40015);
    return false;
  }
  ZK_BinaryMemoryArchive archive(*block);
  const CKorvoPlugIn::BlockHeader header = CKorvoPlugIn::ReadBlockHeader(archive);
  if (header == CKorvoPlugIn::BlockHeader::newer) {
    PrintMessage(L"This model was created with a more recent version of the Stance plug-in\n",
                 40016);
    return false;
  }
  if (header == CKorvoPlugIn::BlockHeader::damaged || !table.Read(archive)) {
    PrintMessage(L"The stances of the file cannot be read.\n", 40017);
    return false;
  }
  return true;
}

// One line per stance that the merge would keep, named as the merge would name it.
void PrintArrivals(const CKorvoDocData& imported, const CKorvoDocData& live,
                   const CTarsaFilePreview& file) {
  std::unordered_map<ZK_UUID, int, ZK_UuidHash> carriers = CountCarriers(file);
  CKorvoNameSet taken = live.Names();
  int arriving = 0;
  for (INT_PTR i = 0; i < imported.m_entries.GetSize(); ++i) {
    const CKorvoDocData::USER_DATA& stance = *imported.m_entries[i];
    const ZK_wString name = ImportedName(taken, stance.m_name);
    const int count = carriers[stance.m_id];
    // The merge drops a stance without a name or without an object that carries it.
    if (name.IsEmpty() || count == 0) continue;
    ++arriving;
    TarsaApp().Print(TsLocalizeString(L"%s: arrives as %s, carried by %d objects\n", 40018),
                     stance.m_name.Array(), name.Array(), count);
  }
  if (arriving == 0) PrintMessage(L"The file has no stances.\n", 40015);
}

}  // namespace

CCommandStanceImportPreview::CCommandStanceImportPreview()
    : CTarsaCommand(false, false, nullptr, false) {}

CCommandStanceImportPreview::~CCommandStanceImportPreview() = default;

ZK_UUID CCommandStanceImportPreview::CommandId() const { return kCommandId; }

const wchar_t* CCommandStanceImportPreview::EnglishCommandName() { return L"StanceImportPreview"; }

CTarsaCommand::result CCommandStanceImportPreview::Execute(const CTarsaCommandContext& context) {
  CTarsaDoc* doc = context.Document();
  if (doc == nullptr) return failure;
  ZK_wString path;
  if (AskForText(TsLocalizeString(L"File to preview", 40014), false, path) != CTarsaGet::string) {
    return cancel;
  }
  CTarsaFilePreview file;
  std::wstring error;
  if (!file.Read(path.ToUtf8(), error)) {
    TarsaApp().Print(L"%s\n", error.c_str());
    return failure;
  }
  CKorvoDocData imported;
  if (ReadFileTable(file, imported)) {
    PrintArrivals(imported, *KorvoPlugIn().DocData(doc->RuntimeSerialNumber()), file);
  }
  return success;
}
