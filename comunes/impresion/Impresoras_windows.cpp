#include <windows.h>
#include <winspool.h>

#include "comunes/impresion/Impresora.h"

namespace comunes {
namespace {

constexpr DWORD kBytesIniciales = 3076;

QString texto(const wchar_t* cadena) {
  return cadena ? QString::fromWCharArray(cadena) : QString();
}

}  // namespace

std::vector<InfoImpresora> ListaDeImpresoras() {
  std::vector<BYTE> memoria(kBytesIniciales);
  DWORD necesarios = 0;
  DWORD cuantas = 0;
  const auto preguntar = [&] {
    return EnumPrintersW(PRINTER_ENUM_LOCAL, nullptr, 1, memoria.data(), static_cast<DWORD>(memoria.size()),
                         &necesarios, &cuantas) != 0;
  };
  bool hecho = preguntar();
  if (!hecho && GetLastError() == ERROR_INSUFFICIENT_BUFFER) {
    memoria.resize(necesarios);
    hecho = preguntar();
  }
  std::vector<InfoImpresora> lista;
  if (!hecho) return lista;
  const auto* registros = reinterpret_cast<const PRINTER_INFO_1W*>(memoria.data());
  for (DWORD i = 0; i < cuantas; ++i) {
    lista.push_back({registros[i].Flags, texto(registros[i].pDescription), texto(registros[i].pName),
                     texto(registros[i].pComment)});
  }
  return lista;
}

int ShowPrinterProperties(quintptr hwnd, const QString& printerName) {
  HANDLE impresora = nullptr;
  std::wstring nombre = printerName.toStdWString();
  if (!OpenPrinterW(nombre.data(), &impresora, nullptr)) return 0;
  const int resultado = PrinterProperties(reinterpret_cast<HWND>(hwnd), impresora);
  ClosePrinter(impresora);
  return resultado;
}

}  // namespace comunes
