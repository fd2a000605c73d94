// Diseños de registro: leer los campos y volver a escribirlos. La entrada: un byte que da el campo que se
// cambia; unos ajustes, hasta un 1C; y el registro, en su forma breve.
#include <algorithm>
#include <map>

#include "Objetivo.h"
#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/Texto.h"
#include "remesa/SEPA.h"
#include "ventanas/editor/Ayudas.h"
#include "ventanas/editor/Descripciones.h"

using namespace editor;
using fuzz::Exigir;

namespace {

using namespace Qt::StringLiterals;

constexpr int kMaxLongitud = 32767;

std::vector<QString> Valores(const Descripcion& diseno, std::string_view registro) {
  std::vector<QString> valores;
  for (const CampoDescrito& campo : diseno.campos)
    valores.push_back(ValorCampo(registro, campo));
  return valores;
}

bool ConRelleno(const CampoDescrito& campo) {
  return campo.relleno == "I"_L1 || campo.relleno == "D"_L1 || campo.relleno == "C"_L1;
}

void MirarCampos(const Descripcion& diseno, const std::vector<QString>& valores) {
  Exigir(diseno.campos.size() <= static_cast<std::size_t>(kCamposMaximos), "no se leen más de 50 campos");
  std::size_t total = 0;
  for (std::size_t i = 0; i < diseno.campos.size(); ++i) {
    const CampoDescrito& campo = diseno.campos[i];
    Exigir(campo.longitud >= 0 && campo.longitud <= kMaxLongitud && campo.desde >= 0 &&
               campo.desde <= kMaxLongitud,
           "longitudes y posiciones son de un registro");
    Exigir(valores[i].size() <= std::min<qsizetype>(campo.longitud, 600), "el valor cabe en el campo");
    const std::string bytes = BytesCampo(campo, valores[i]);
    if (ConRelleno(campo))
      Exigir(bytes.size() == static_cast<std::size_t>(campo.longitud), "un campo con relleno ocupa lo suyo");
    total += bytes.size();
    DatoCorrecto(campo.ayuda, valores[i]);
    Interpretar(campo.ayuda, valores[i]);
    if (const auto respuesta = ConvertirRespuesta(campo.ayuda, campo.longitud, valores[i]))
      BytesCampo(campo, *respuesta);
  }
  Exigir(EscribirRegistro(diseno.campos, valores).size() == total, "el registro son sus campos");
}

/// Los campos van seguidos desde la posición 1 y llenan el registro.
bool Completo(const Descripcion& diseno) {
  int siguiente = 1;
  for (const CampoDescrito& campo : diseno.campos) {
    if (campo.desde != siguiente || !ConRelleno(campo)) return false;
    siguiente += campo.longitud;
  }
  return siguiente == 601;
}

void MirarVuelta(const Descripcion& diseno, const std::string& registro, std::size_t cambiado) {
  std::vector<QString> valores = Valores(diseno, registro);
  MirarCampos(diseno, valores);
  if (!Completo(diseno)) return;
  const std::string reducido = remesa::TextoSEPA(fuzz::Ajustado(registro));
  Exigir(EscribirRegistro(diseno.campos, valores) == reducido,
         "leer y escribir solo reduce los caracteres a SEPA");

  cambiado %= diseno.campos.size();
  valores[cambiado] = u"x"_s;
  std::string esperado = reducido;
  const CampoDescrito& campo = diseno.campos[cambiado];
  esperado.replace(static_cast<std::size_t>(campo.desde) - 1, static_cast<std::size_t>(campo.longitud),
                   BytesCampo(campo, valores[cambiado]));
  Exigir(EscribirRegistro(diseno.campos, valores) == esperado, "cambiar un campo no cambia los demás");
}

/// Los diseños del programa, leídos una vez.
const Descripcion& DelPrograma(const QString& seccion) {
  static std::map<QString, Descripcion> leidas;
  static const Descripcion ninguna;
  if (seccion.startsWith(u'C')) return ninguna;  // [Comunes]
  auto hallada = leidas.find(seccion);
  if (hallada == leidas.end()) {
    if (leidas.size() > 64) return ninguna;
    hallada = leidas.emplace(seccion, LeerDescripcion(u"" DIR_PROYECTO u"/app/Tarvo.INI"_s, seccion)).first;
  }
  return hallada->second;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t largo) {
  comunes::PonerFechaActual(QDate(2026, 11, 25));
  comunes::PonerLocaleUsuario(QLocale(QLocale::Spanish, QLocale::Spain));
  fuzz::Entrada entrada(datos, largo);
  const std::size_t cambiado = entrada.byte();
  const std::string_view ajustes = entrada.hasta('\x1C');
  const std::string registro = fuzz::Desplegar(entrada.resto());

  MirarVuelta(DelPrograma(SeccionDe(registro, 19)), registro, cambiado);
  if (ajustes.empty()) return 0;
  const auto ruta = fuzz::Ruta("ajustes.ini");
  fuzz::Escribir(ruta, ajustes);
  for (const int tipo : {19, 34})
    MirarVuelta(LeerDescripcion(comunes::DesdeRuta(ruta), SeccionDe(registro, tipo)), registro, cambiado);
  return 0;
}
