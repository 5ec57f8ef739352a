// Writes the seed corpus of every fuzz target from real data: the model files, document blocks,
// stance tables and placement records that the plug-in and the host write for a document with
// stances, and command texts as users and the panel type them.
//   make_corpus fuzz/corpus

#include <cstdio>
#include <string>
#include <vector>

#include <sys/stat.h>

#include "data/placement_record.h"
#include "fuzz/fuzz_session.h"
#include "host/tarsa/standin/tarsa_model_file.h"
#include "host/tarsa/standin/tarsa_standin.h"
#include "plugin/korvo_plugin.h"
#include "testing/model_file_blocks.h"

namespace {

std::string g_folder;

void Put(const std::string& target, const std::string& name,
         const std::vector<unsigned char>& bytes) {
  mkdir((g_folder + "/" + target).c_str(), 0755);
  ModelFileBlocks::WriteFile(g_folder + "/" + target + "/" + name, bytes);
}

void PutText(const std::string& name, const std::string& text) {
  Put("command_line_fuzz", name, std::vector<unsigned char>(text.begin(), text.end()));
}

void PutModelFiles(CTarsaDoc& doc) {
  const std::string path = g_folder + "/model_file_fuzz/stances.tsm";
  mkdir((g_folder + "/model_file_fuzz").c_str(), 0755);
  std::wstring error;
  TsWriteModelFile(doc, path, error);
  CTarsaDoc& empty = *CTarsaStandIn::NewDocument();
  TsWriteModelFile(empty, g_folder + "/model_file_fuzz/no_stances.tsm", error);
  CTarsaStandIn::CloseDocument(empty.RuntimeSerialNumber());
}

void PutBlocks(CTarsaDoc& doc) {
  const CTarsaFileWriteOptions options(doc.RuntimeSerialNumber(), L"");
  ZK_BinaryMemoryArchive block;
  KorvoPlugIn().WriteDocument(doc, block, options);
  Put("document_block_fuzz", "two_stances", block.Bytes());
  ZK_BinaryMemoryArchive table;
  KorvoPlugIn().DocData(doc.RuntimeSerialNumber())->Write(table);
  Put("stance_table_fuzz", "two_stances", table.Bytes());
  CKorvoDocData unusual;
  unusual.Add(ZK_UuidFromString("0D1C2B3A-4958-4766-8574-A3B2C1D0E9F8"),
              L"\u00C9t\u00E9 \"quoted\"");
  ZK_BinaryMemoryArchive other;
  unusual.Write(other);
  Put("stance_table_fuzz", "quoted_name", other.Bytes());

  CTarsaObjectIterator it(doc, 7);
  it.IncludeLights(true);
  it.EnableVisibleFilter(false);
  int index = 0;
  for (const CTarsaObject* object = it.First(); object; object = it.Next()) {
    if (const CKorvoUserData* record = CKorvoUserData::Of(object)) {
      ZK_BinaryMemoryArchive bytes;
      record->Write(bytes);
      Put("placement_record_fuzz", "record_" + std::to_string(index++), bytes.Bytes());
    }
  }
}

void PutTexts() {
  PutText("save_restore",
          "-_Stance _Save Back door rail _Enter _Enter\n_Move door _Enter 1,0,0\n"
          "-_Stance _Restore Back _Enter\n");
  PutText("list_select_visible", "-_Stance _List _Select Front _Visible=_Yes _Enter\n");
  PutText("rename_delete", "-_Stance _Rename Side \"Side view\" _Delete Front _Enter\n");
  PutText("update_append", "-_Stance _Update Side _Append Side rail _Enter _Enter\n");
  PutText("panel_macros",
          "@!-_Stance _Restore \"Front\"  _ENTER\n@!-_Stance _Save \"Top\" _Pause\n"
          "door\n_Enter\n@!-_Stance _Rename \"Top\" \"Up\" _ENTER\n");
  PutText("copy_explode", "_Copy door _Enter 0,0,1\n_Explode rail _Enter\n-_Stance _List _Enter\n");
  PutText("escape", "-_Stance _Save\n_Escape\n_Stance\n");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: make_corpus <corpus folder>\n");
    return 2;
  }
  g_folder = argv[1];
  mkdir(g_folder.c_str(), 0755);
  CTarsaDoc& doc = FuzzSession::Begin();
  PutModelFiles(doc);
  PutBlocks(doc);
  PutTexts();
  FuzzSession::End();
  return 0;
}
