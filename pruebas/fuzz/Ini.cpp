// ReadINI. La entrada: sección, clave y defecto, cada uno en su línea, y el fichero.
#include <QString>

#include "Objetivo.h"
#include "comunes/plataforma/Aviso.h"
#include "comunes/plataforma/IniFiles.h"
#include "comunes/plataforma/Texto.h"

using namespace fuzz;
using comunes::DesdeWindows1252;

namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype kMaximo = 2047;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t largo) {
  Entrada entrada(datos, largo);
  const QString seccion = DesdeWindows1252(entrada.hasta('\n'));
  const QString clave = DesdeWindows1252(entrada.hasta('\n'));
  const QString defecto = DesdeWindows1252(entrada.hasta('\n'));
  const std::string contenido(entrada.resto());
  const auto ruta = Ruta("ajustes.ini");
  const auto leer = [&](const std::string& bytes, const QString& cual, const QString& que,
                        const QString& si) {
    Escribir(ruta, bytes);
    return comunes::ReadINI(comunes::DesdeRuta(ruta), cual, que, si);
  };

  const QString otro = defecto + u"otro"_s;
  const QString valor = leer(contenido, seccion, clave, defecto);
  const bool hallado = valor == leer(contenido, seccion, clave, otro);
  Exigir(hallado || valor == defecto, "sin valor se da el defecto");
  if (hallado) {
    Exigir(!valor.isEmpty() && valor.size() <= kMaximo, "un valor tiene de 1 a 2047 bytes");
    for (const QChar c : valor)
      Exigir(c != u'\r' && c != u'\n' && c != u'\0', "un valor no pasa de su línea");
  }

  // Lo que va delante tapa lo que sigue; lo que va detrás con un nombre que no está, se encuentra.
  const bool conMarca = contenido.starts_with("\xEF\xBB\xBF") || contenido.starts_with("\xFF\xFE") ||
                        contenido.starts_with("\xFE\xFF") || contenido.find('\0') != std::string::npos;
  const std::string propia = "[Propia]\r\nclave=puesto\r\n";
  const auto leerPropia = [&](const std::string& bytes) {
    return leer(bytes, u" pROPIA"_s, u"Clave "_s, {}) == "puesto"_L1;
  };
  if (conMarca) return 0;
  Exigir(leerPropia(propia + contenido), "vale la primera sección de su nombre");
  if (!DesdeWindows1252(contenido).contains(u"propia"_s, Qt::CaseInsensitive))
    Exigir(leerPropia(contenido + "\r\n" + propia), "se encuentra la última sección");
  return 0;
}
