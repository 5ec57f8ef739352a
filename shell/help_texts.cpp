#include "shell/help_texts.h"

#include "host/zefkit/zk_string.h"

namespace {

struct HelpText {
  const wchar_t* name;
  const wchar_t* summary;
  const wchar_t* details;
};

const wchar_t kPicking[] =
    L"  Pick objects by name or id, one answer each; Enter ends the picking. Objects selected\n"
    L"  before the command are taken without asking.\n";

const HelpText kTexts[] = {
    {L"Attach", L"attaches a model file: its objects join as reference objects.",
     L"  Answer: the file (\".tsm\" is added when there is no extension).\n"},
    {L"Box", L"adds a box with a name, given two opposite corners.",
     L"  Answers: the name (Enter: none), the first corner x,y,z, the opposite corner x,y,z.\n"},
    {L"Copy", L"copies objects by an offset; the originals stay.",
     L"  Answers: the objects, the offset x,y,z.\n"},
    {L"Delete", L"deletes objects.", kPicking},
    {L"Duplicate", L"copies objects in place; the copies are new objects.", kPicking},
    {L"Exit", L"ends the program.", L"  Asks before it drops unsaved changes; -Exit never asks.\n"},
    {L"Explode", L"breaks polylines and boxes into their segments and edges.", kPicking},
    {L"Help", L"lists the commands, or explains one.",
     L"  Answer: a command name, or Enter for all.\n"},
    {L"Hide", L"hides objects: they stay in the model but are not shown or picked.", kPicking},
    {L"History",
     L"marks objects as carrying construction history, so nothing moves them on its own.",
     kPicking},
    {L"Import", L"merges a model file into the model, stances included.",
     L"  Answer: the file (\".tsm\" is added when there is no extension).\n"},
    {L"Light", L"adds a light with a name, a location and a direction.",
     L"  Answers: the name (Enter: none), the location x,y,z, the direction x,y,z.\n"},
    {L"List", L"lists every object: name, kind, state, selection, where it is, id.", L""},
    {L"ListStances", L"lists the stances as the host sees them: id, name and number of objects.",
     L""},
    {L"Lock", L"locks objects: they are shown but cannot be picked or changed.", kPicking},
    {L"Move", L"moves objects by an offset.", L"  Answers: the objects, the offset x,y,z.\n"},
    {L"New", L"starts an empty model.",
     L"  Asks before it drops unsaved changes; -New never asks.\n"},
    {L"Open", L"opens a model file in place of the model.",
     L"  Answer: the file. Asks before it drops unsaved changes; -Open never asks.\n"},
    {L"Panel", L"acts on the open Stances panel as a person would with the mouse.",
     L"  Answer: Show (print the panel now), Select (the items named, one answer each, Enter\n"
     L"  ends; Enter alone selects none), Click and a button (Save Restore Delete Rename Update\n"
     L"  Append Select Help), Menu (the context menu), DoubleClick and an item, or Rename and an\n"
     L"  item (its label is edited). The action runs when the command has ended; the menu, the\n"
     L"  save dialog, the label and the questions it shows are answered on the command line,\n"
     L"  where Enter takes what the prompt proposes, or No.\n"},
    {L"Picture", L"writes a 3-D view of the model as an SVG picture.",
     L"  Answer: the file (\".svg\" is added when there is no extension), then on the same line\n"
     L"  the side it is seen from: Top, Front, Right or Iso (the default). Boxes are solid and\n"
     L"  shaded, selected objects highlighted, hidden ones left out; the names never overlap.\n"},
    {L"PlugIns", L"lists the loaded plug-ins with their version, file and developer.", L""},
    {L"Point", L"adds a point with a name and a location.",
     L"  Answers: the name (Enter: none), the location x,y,z.\n"},
    {L"Polyline", L"adds a polyline with a name through points.",
     L"  Answers: the name (Enter: none), then points x,y,z; Enter after two or more ends it.\n"},
    {L"Rebuild", L"makes objects anew from their points, as new objects.", kPicking},
    {L"Redo", L"applies again the step Undo took back.", L""},
    {L"RestoreStanceById", L"restores a stance named by its id, as the host does.",
     L"  Answer: the stance's id, as ListStances shows it.\n"},
    {L"Replace", L"makes objects anew from their points, each in its object's place.", kPicking},
    {L"Rotate", L"rotates objects about a vertical axis.",
     L"  Answers: the objects, the angle in degrees (counter-clockwise seen from above), the\n"
     L"  center x,y,z.\n"},
    {L"RunScript", L"runs the command lines of a script file.",
     L"  Answer: the file. Lines starting with # are comments.\n"},
    {L"Save", L"saves the model to its file, asking for one the first time.", L""},
    {L"SaveAs", L"saves the model to a new file, which becomes its file.",
     L"  Answer: the file (\".tsm\" is added when there is no extension).\n"},
    {L"Scale", L"scales objects about a center point.",
     L"  Answers: the objects, the factor (not 0), the center x,y,z.\n"},
    {L"Script", L"calls a method of the plug-in's script object, as a script would.",
     L"  Answers: the method, then one argument each: i2:5, i4:-3, r4:1.5, r8:1.5 (numbers of\n"
     L"  those types), true or false, ids:a,b (an array of ids; a name stands for its objects'\n"
     L"  ids), missing, or a text; Enter calls. The result shows as the script sees it.\n"},
    {L"SelAll", L"selects every object that can be picked.", L""},
    {L"SelNone", L"clears the selection.", L""},
    {L"Select", L"adds objects to the selection.", kPicking},
    {L"Show", L"shows every hidden object again.", L""},
    {L"Stance", L"saves where objects are under a name, and puts them back there later.",
     L"  Answer: an option; each asks what it needs, then the options come back until Enter.\n"
     L"  List               lists the stances.\n"
     L"  Save               asks for a name (Enter takes the one proposed), then the objects;\n"
     L"                     a name in use asks whether to update that stance.\n"
     L"  Restore            asks for a stance and moves its objects back to where it saved them.\n"
     L"  Delete             asks for a stance and deletes it; its objects stay where they are.\n"
     L"  Rename             asks for a stance, then its new name.\n"
     L"  Select             asks for a stance and selects its objects.\n"
     L"  Update             asks for a stance and saves where its objects are now.\n"
     L"  Append             asks for a stance, then the objects to add to it where they are now.\n"
     L"  Visible            shows (Yes), hides (No) or toggles (Toggle) the Stances panel.\n"
     L"  Tab completes a stance's name. Stance without the \"-\" works through the panel.\n"},
    {L"StanceCheck", L"tells where the model stands against each stance, without moving anything.",
     L"  Answer: a stance, or Enter for all of them. For all: each stance with its number of\n"
     L"  members, how many moved, the largest distance and angle, and \"matches\" where every\n"
     L"  member is at the stance. For one: each member, at the stance or moved by how much.\n"},
    {L"StanceImportPreview", L"tells what importing a model file would bring, importing nothing.",
     L"  Answer: the file. Each stance in it, the name it would get here, and its objects.\n"},
    {L"StanceRestoreObjects", L"puts only some objects of a stance back, as one step.",
     L"  Answers: the stance, then the objects (those selected are taken). Picked objects that\n"
     L"  are not in the stance are named; nothing else moves.\n"},
    {L"Undo", L"takes back the last step: a command and everything it changed, stances included.",
     L""},
    {L"Unlock", L"unlocks every locked object.", L""},
    {L"What", L"describes objects in detail, points included.", kPicking},
};

const HelpText* Find(const std::wstring& name) {
  for (const HelpText& text : kTexts) {
    if (ZK_wString(text.name).CompareNoCase(name.c_str()) == 0) return &text;
  }
  return nullptr;
}

}  // namespace

std::wstring TsHelpSummary(const std::wstring& english_name) {
  const HelpText* text = Find(english_name);
  return text ? text->summary : L"a plug-in's command.";
}

std::wstring TsHelpDetails(const std::wstring& english_name) {
  const HelpText* text = Find(english_name);
  return text ? text->details : L"";
}
