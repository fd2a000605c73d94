#include "ventanas/editor/Descripciones.h"

#include <QStringList>
#include <algorithm>
#include <cmath>

#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/IniFiles.h"
#include "comunes/plataforma/Texto.h"
#include "remesa/Campos.h"
#include "remesa/SEPA.h"

namespace editor {

using namespace Qt::StringLiterals;

namespace {

// Columnas de una línea de campo; la novena no se lee.
enum Columna { kRotulo, kLongitud, kDesde, kEditable, kClase, kRelleno, kOpcional, kAyuda, kExplicacion = 9 };
constexpr int kSeparadores = 10;

/// Posiciones del número de dato en los ficheros de tipo 34.
constexpr remesa::Posiciones kNumeroDato34{11, 13};

/// Número sin decimales de los ajustes. Nada que pase de 32767 puede ser una posición.
int entero(const QString& texto) {
  constexpr double kMaximo = 32767;
  return static_cast<int>(std::clamp(std::nearbyint(comunes::Val(texto)), 0.0, kMaximo));
}

std::string completado(std::string_view registro) {
  std::string bytes(registro.substr(0, remesa::kLongitudRegistro));
  remesa::AjustarLongitud(bytes);
  return bytes;
}

bool SoloBlancos(const QString& texto) {
  return std::all_of(texto.begin(), texto.end(), [](QChar c) { return c == u' '; });
}

QString descriptorDe(const QStringList& columnas) {
  const QString& clase = columnas[kClase];
  if (clase != "A"_L1 && clase != "N"_L1) return {};
  return u"L("_s + columnas[kLongitud] + u") A("_s + columnas[kRelleno] +
         (clase == "A"_L1 ? u") T(M)"_s : u") T(D)"_s);
}

Ayuda ayudaDe(const QString& nombre) {
  if (nombre == "FECHA"_L1) return Ayuda::Fecha;
  if (nombre == "IBAN"_L1) return Ayuda::Iban;
  if (nombre == "EUROS"_L1) return Ayuda::Euros;
  if (nombre == "NUMERO"_L1) return Ayuda::Numero;
  return Ayuda::Ninguna;
}

}  // namespace

QString SeccionDe(std::string_view registro, int tipo) {
  const std::string bytes = completado(registro);
  std::string seccion(remesa::LeerCampo(bytes, remesa::kCodigo));
  if (seccion == "03") {
    if (tipo == 19) seccion += remesa::LeerCampo(bytes, remesa::kNumeroDato);
    if (tipo == 34) seccion += remesa::LeerCampo(bytes, kNumeroDato34);
  }
  return comunes::DesdeWindows1252(seccion);
}

int NumeroCampos(const QString& fichero, const QString& seccion) {
  return std::min(entero(comunes::ReadINI(fichero, seccion, u"Campos"_s, {})), kCamposMaximos);
}

CampoDescrito LeerCampo(const QString& linea) {
  const QStringList columnas = (linea + QString(kSeparadores, u';')).split(u';');
  CampoDescrito campo;
  campo.rotulo = columnas[kRotulo];
  campo.posicion = u"Desde "_s + columnas[kDesde] + u" - Bytes "_s + columnas[kLongitud];
  campo.longitud = entero(columnas[kLongitud]);
  campo.desde = entero(columnas[kDesde]);
  campo.editable = columnas[kEditable] != "N"_L1;
  campo.descriptor = descriptorDe(columnas);
  campo.relleno = columnas[kRelleno];
  campo.opcional = columnas[kOpcional] == "OP"_L1;
  campo.ayuda = ayudaDe(columnas[kAyuda]);
  campo.explicacion = columnas[kExplicacion];
  return campo;
}

Descripcion LeerDescripcion(const QString& fichero, const QString& seccion) {
  Descripcion descripcion{seccion, comunes::ReadINI(fichero, seccion, u"Titulo"_s, {}), {}};
  const int campos = NumeroCampos(fichero, seccion);
  descripcion.campos.reserve(static_cast<std::size_t>(campos));
  for (int i = 1; i <= campos; ++i)
    descripcion.campos.push_back(LeerCampo(comunes::ReadINI(fichero, seccion, QString::number(i), {})));
  return descripcion;
}

QString ValorCampo(std::string_view registro, const CampoDescrito& campo) {
  if (campo.desde < 1) return {};
  const std::string bytes = completado(registro);
  return comunes::DesdeWindows1252(remesa::LeerCampo(bytes, {campo.desde, campo.desde + campo.longitud - 1}));
}

std::string BytesSEPA(const QString& texto) {
  std::string bytes;
  for (const char32_t c : texto.normalized(QString::NormalizationForm_C).toUcs4()) {
    const QString caracter = QString::fromUcs4(&c, 1);
    bytes += comunes::CabeEnWindows1252(caracter) ? remesa::TextoSEPA(comunes::AWindows1252(caracter)) : "0";
  }
  return bytes;
}

std::string BytesCampo(const CampoDescrito& campo, const QString& texto) {
  std::string bytes = BytesSEPA(texto);
  const auto longitud = static_cast<std::size_t>(campo.longitud);
  if (campo.relleno == "I"_L1) {
    bytes.resize(longitud, ' ');
  } else if (campo.relleno == "D"_L1 || campo.relleno == "C"_L1) {
    bytes.insert(0, longitud, campo.relleno == "C"_L1 ? '0' : ' ');
    bytes.erase(0, bytes.size() - longitud);
  }
  return bytes;
}

std::string BytesCampo(const CampoDescrito& campo, const QString& texto, const QString& original) {
  const bool sigueEnBlanco = SoloBlancos(texto) && SoloBlancos(original) && original.size() == campo.longitud;
  return sigueEnBlanco ? std::string(static_cast<std::size_t>(campo.longitud), ' ')
                       : BytesCampo(campo, texto);
}

std::string EscribirRegistro(std::span<const CampoDescrito> campos, std::span<const QString> textos,
                             std::span<const QString> originales) {
  std::string registro;
  registro.reserve(remesa::kLongitudRegistro);
  for (std::size_t i = 0; i < campos.size() && i < textos.size(); ++i)
    registro += BytesCampo(campos[i], textos[i], i < originales.size() ? originales[i] : QString());
  return registro;
}

}  // namespace editor
