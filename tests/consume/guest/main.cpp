// A host that knows of KvFound only through its plugin.
#include <dlfcn.h>

#include <iostream>

int main(int argc, char** argv) {
  void* const plugin = dlopen(PLUGIN, RTLD_NOW | RTLD_LOCAL);
  if (plugin == nullptr || argc < 2) return 1;
  using Function = double (*)(const char*);
  const auto largestStiffness = reinterpret_cast<Function>(dlsym(plugin, "largestStiffness"));
  if (largestStiffness == nullptr) return 1;
  for (int i = 1; i < argc; ++i)
    std::cout << largestStiffness(argv[i]) << (i + 1 < argc ? ' ' : '\n');
}
