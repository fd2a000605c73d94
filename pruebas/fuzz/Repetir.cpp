// Sin libFuzzer: pasa por el objetivo cada fichero de las carpetas que se le dan.
#include <cstdio>
#include <exception>

#include "Objetivo.h"

int main(int argc, char** argv) try {
  int pasados = 0;
  for (int i = 1; i < argc; ++i)
    for (const auto& entrada : std::filesystem::directory_iterator(argv[i])) {
      const std::string bytes = fuzz::Leer(entrada.path());
      std::fprintf(stderr, "%s\n", entrada.path().filename().string().c_str());
      LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
      ++pasados;
    }
  std::printf("%d entradas\n", pasados);
  return pasados > 0 ? 0 : 1;
} catch (const std::exception& error) {
  std::fprintf(stderr, "%s\n", error.what());
  return 1;
}
