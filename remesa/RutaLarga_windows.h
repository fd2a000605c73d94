#pragma once

#include <filesystem>

namespace remesa {

/// La ruta absoluta con el prefijo "\\?\", que Windows no limita a 260 caracteres.
inline std::filesystem::path RutaLarga(const std::filesystem::path& ruta) {
  std::error_code error;
  std::filesystem::path absoluta = std::filesystem::absolute(ruta, error).lexically_normal().make_preferred();
  const std::wstring& texto = absoluta.native();
  if (error || texto.starts_with(L"\\\\?\\") || texto.starts_with(L"\\\\.\\")) return error ? ruta : absoluta;
  if (texto.starts_with(L"\\\\")) return L"\\\\?\\UNC\\" + texto.substr(2);
  return L"\\\\?\\" + texto;
}

}  // namespace remesa
