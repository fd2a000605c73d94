// Descriptores: lo que se muestra, lo que se edita y lo que se deja escribir. La entrada: un byte, que da el
// idioma, el descriptor en una línea y el valor, en UTF-8.
#include <array>

#include "Objetivo.h"
#include "comunes/campos/Etiquetas.h"
#include "comunes/campos/Filtro.h"
#include "comunes/campos/Formato.h"
#include "comunes/campos/WinDos.h"
#include "comunes/plataforma/Aviso.h"
#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/Texto.h"

using namespace comunes;
using fuzz::Exigir;

namespace {

using namespace Qt::StringLiterals;

/// Mostrar lo que se edita de lo mostrado no lo cambia: visitar un campo sin tocarlo no puede cambiar su
/// dato. Salvo un cero sin decimales, que se edita vacío, y los "?" de más de un NIF, que se quitan de uno en
/// uno.
void MirarFormato(const QString& descriptor, QString valor) {
  // En un campo de cifras o en una cuenta contable no hay más que lo que se deja escribir.
  const auto tipo = GetTag(descriptor, u"T"_s);
  if (tipo == u"C"_s || tipo == u"D"_s) valor = Filtro(descriptor).Texto({}, valor).value_or(QString());
  const QString mostrado = FormatValue(valor, descriptor);
  QString editado = UnformatValue(mostrado, descriptor);
  if ((mostrado == "0"_L1 && editado.isEmpty()) || mostrado.endsWith(u'?')) return;
  Exigir(FormatValue(editado, descriptor) == mostrado, "editar lo mostrado y mostrarlo da lo mismo");
}

void MirarFiltro(const QString& descriptor, const QString& valor) {
  const Filtro filtro(descriptor);
  const QString escrito = filtro.Texto({}, valor).value_or(QString());
  Exigir(escrito.size() <= filtro.longitud(), "no se escribe más que la longitud");
  // Pegado otra vez podría ser otro: «1, 468» deja «1.468», que es como se escribe 1468. El "?" tecleado pide
  // letra.
  EstadoCaja tecleado;
  for (const char32_t c : escrito.toUcs4()) {
    Exigir(c == U'?' || filtro.Tecla(tecleado, c) == c, "lo que se dejó escribir se puede teclear");
    tecleado.texto += QString::fromUcs4(&c, 1);
    tecleado.cursor = tecleado.texto.size();
  }
  EstadoCaja caja{escrito, escrito.size() / 2, escrito.size() / 4};
  const QString entra = filtro.Texto(caja, valor).value_or(QString());
  caja.texto.remove(caja.cursor, caja.seleccion);
  Exigir(entra.isEmpty() || caja.texto.size() + entra.size() <= filtro.longitud(),
         "con lo que había no se pasa de la longitud");
}

void MirarEtiquetas(const QString& descriptor, const QString& valor) {
  for (const char* clave : {"T", "L", "A", "D", "+"}) {
    const QString nombre = QLatin1String(clave);
    if (valor.contains(nombre == "+"_L1 ? u']' : u')')) continue;
    Exigir(GetTag(SetTag(descriptor, nombre, valor), nombre) == valor, "se lee la etiqueta que se puso");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t largo) {
  PonerAvisador([](GradoAviso, const QString&, const QString&) {});
  PonerFechaActual(QDate(2026, 11, 25));
  static const std::array locales{QLocale(QLocale::Spanish, QLocale::Spain),
                                  QLocale(QLocale::English, QLocale::UnitedKingdom),
                                  QLocale(QLocale::French, QLocale::France)};
  fuzz::Entrada entrada(datos, largo);
  PonerLocaleUsuario(locales[entrada.byte() % locales.size()]);
  const QString descriptor = DesdeWindows1252(entrada.hasta('\n'));
  const std::string_view bytes = entrada.resto();
  const QString valor = QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));

  MirarFormato(descriptor, valor);
  MirarFiltro(descriptor, valor);
  MirarEtiquetas(descriptor, valor);
  const auto fecha = CompletarFecha(valor);
  Exigir(!fecha || LeerFecha(FormatoFecha(*fecha, ModoFecha::Numerica)) == fecha,
         "una fecha completada se lee");
  for (const char* sentido : {"win", "DOS", ""})
    Exigir(WinDos(bytes, sentido).size() == bytes.size(), "WinDos conserva la longitud");
  return 0;
}
