#include "ventanas/principal/TextoVisible.h"

#include "comunes/plataforma/Texto.h"

namespace principal {

bool EsVisible(unsigned char byte) {
  switch (byte) {
    case 0x7F:
    case 0x81:
    case 0x8D:
    case 0x8F:
    case 0x90:
    case 0x9D:
    case 0xAD:
      return false;
    default:
      return byte >= 0x20;
  }
}

QString TextoVisible(std::string_view bytes) {
  QString texto = comunes::DesdeWindows1252(bytes);
  for (qsizetype i = 0; i < texto.size(); ++i) {
    const auto byte = static_cast<unsigned char>(bytes[static_cast<std::size_t>(i)]);
    if (EsVisible(byte)) continue;
    texto[i] = byte < 0x20 ? QChar(0x2400 + byte) : byte == 0x7F ? QChar(0x2421) : QChar(0xFFFD);
  }
  return texto;
}

}  // namespace principal
