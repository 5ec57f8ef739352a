#include "shell/plugin_loading.h"

#include <unistd.h>

#include "host/tarsa/standin/tarsa_plugin_loader.h"

std::string TsDefaultPlugInPath() {
  char buffer[4096];
  const ssize_t length = readlink("/proc/self/exe", buffer, sizeof buffer - 1);
  std::string program = length > 0 ? std::string(buffer, static_cast<size_t>(length)) : "";
  const size_t slash = program.find_last_of('/');
  return (slash == std::string::npos ? std::string(".") : program.substr(0, slash)) + "/Korvo.tsp";
}

CTarsaPlugIn* TsLoadStancePlugIn(const std::string& path, std::wstring& error) {
  return CTarsaPlugInLoader::Load(path.empty() ? TsDefaultPlugInPath() : path, error);
}
