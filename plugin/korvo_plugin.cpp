#include "plugin/korvo_plugin.h"

namespace {

const ZK_UUID kPlugInId = {
    0xFCEA57AE, 0x7C24, 0x4BC5, {0xA0, 0x67, 0x1D, 0xFF, 0xA6, 0x13, 0x98, 0x59}};

CKorvoPlugIn thePlugIn;

}  // namespace

ZK_UUID CKorvoPlugIn::PlugInID() const { return kPlugInId; }

CKorvoPlugIn& KorvoPlugIn() { return thePlugIn; }
