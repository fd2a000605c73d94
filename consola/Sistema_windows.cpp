#include <windows.h>
// Detrás de windows.h, que declara lo que necesita.
#include <io.h>
#include <shellapi.h>

#include <memory>

#include "consola/Sistema.h"

namespace consola {

namespace {

std::string AUtf8(const wchar_t* texto) {
  const int bytes = WideCharToMultiByte(CP_UTF8, 0, texto, -1, nullptr, 0, nullptr, nullptr);
  if (bytes <= 1) return {};
  std::string resultado(static_cast<std::size_t>(bytes), '\0');
  WideCharToMultiByte(CP_UTF8, 0, texto, -1, resultado.data(), bytes, nullptr, nullptr);
  resultado.pop_back();
  return resultado;
}

}  // namespace

void PrepararTerminal() {
  SetConsoleOutputCP(CP_UTF8);
}

bool EsTerminal(std::FILE* salida) {
  return _isatty(_fileno(salida)) != 0;
}

// `argv` llega en la página de códigos del sistema y pierde los nombres que no caben en ella.
std::vector<std::string> Argumentos(int, char**) {
  int cuantos = 0;
  const std::unique_ptr<LPWSTR, decltype(&LocalFree)> lista(CommandLineToArgvW(GetCommandLineW(), &cuantos),
                                                            &LocalFree);
  std::vector<std::string> resultado;
  for (int i = 1; lista && i < cuantos; ++i)
    resultado.push_back(AUtf8(lista.get()[i]));
  return resultado;
}

}  // namespace consola
