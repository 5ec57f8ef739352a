// What the plug-in's tests use of the host's and the kernel's stand-ins beyond a session: model
// files, the plug-in loader, the command line, point geometries and the kernel's failure seams.
// The plug-in's own folders never include a stand-in header; their tests reach one through here.
#pragma once

#include <gtest/gtest.h>

#include "host/tarsa/standin/tarsa_command_line.h"
#include "host/tarsa/standin/tarsa_model_file.h"
#include "host/tarsa/standin/tarsa_plugin_loader.h"
#include "host/tarsa/standin/tarsa_standin.h"
#include "host/zefkit/standin/zk_point_geometry.h"
#include "host/zefkit/standin/zk_testing.h"

// A new random id, as a stance or a record entry gets; a test fails if none can be made.
inline ZK_UUID NewId() {
  ZK_UUID id;
  EXPECT_TRUE(ZK_CreateUuid(id));
  return id;
}
