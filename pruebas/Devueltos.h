#pragma once

#include <string>
#include <vector>

#include "Carpeta.h"
#include "Registros.h"
#include "comunes/plataforma/Formatos.h"
#include "devoluciones/Lote.h"
#include "devoluciones/Textos.h"
#include "remesa/TotalesNorma.h"

// Ficheros de devoluciones para sus pruebas, y lo que se dice de los leídos.

namespace pruebas {

using namespace devoluciones;
using namespace remesa;

inline constexpr const char* kOriginal = "PRE2026112412003000000ACUARIO000000";
inline constexpr const char* kAcreedor = "ES33000B99654105";

struct Caso {
  std::string referencia, mandato, importe, motivo;
};

/// Una remesa, o las devoluciones o los rechazos de sus adeudos ('0', '2', '1'), con sus totales.
inline std::vector<std::string> Fichero(char cifra, const std::vector<Caso>& adeudos,
                                        std::string_view fecha = "20261201",
                                        std::string_view original = kOriginal,
                                        std::string_view acreedor = kAcreedor) {
  const auto codigo = [&](char segunda) { return std::string{cifra, segunda} + "1914300"; };
  std::vector<std::string> registros{
      Registro(codigo('1') + "1", {{kIdentificadorPresentador, acreedor},
                                   {kNombrePresentador, "GIMNASIO ACUARIO"},
                                   {kFechaCreacion, "20261124"},
                                   {kIdentificacionFichero, cifra == '0' ? original : "DEV-DEL-BANCO"}}),
      Registro(codigo('2') + "2", {{kIdentificadorAcreedor, acreedor},
                                   {kFechaCobro, cifra == '2' ? "20261203" : fecha},
                                   {kNombreAcreedor, "GIMNASIO ACUARIO"},
                                   {kCuentaAcreedor, "ES9121000418450200051332"},
                                   {kFicheroOriginal, cifra == '0' ? "" : original}})};
  for (const Caso& a : adeudos)
    registros.push_back(Registro(codigo('3') + "3", {{kReferenciaAdeudo, a.referencia},
                                                     {kReferenciaMandato, a.mandato},
                                                     {kTipoAdeudo, "RCUR"},
                                                     {kImporteAdeudo, a.importe},
                                                     {kFechaFirma, "20200101"},
                                                     {kNombreDeudor, "NOMBRE DE " + a.mandato},
                                                     {kClaseCuenta, "A"},
                                                     {kCuentaDeudor, "ES9121000418450200051332"},
                                                     {kConcepto, "CUOTA"},
                                                     {kMotivo, cifra == '0' ? "" : a.motivo},
                                                     {kFechaCobroOriginal, cifra == '2' ? fecha : ""}}));
  for (const char segunda : {'4', '5'})
    registros.push_back(
        Registro(std::string{cifra, segunda},
                 {{segunda == '4' ? kAcreedor04 : kAcreedor05, acreedor},
                  {segunda == '4' ? kFecha04 : Posiciones{600, 600}, segunda == '4' ? fecha : " "}}));
  registros.push_back(Registro("99"));
  TotalesNorma totales;
  constexpr ClaseRegistro kClases[] = {ClaseRegistro::Presentador, ClaseRegistro::Acreedor,
                                       ClaseRegistro::Adeudo, ClaseRegistro::TotalesFecha,
                                       ClaseRegistro::TotalesAcreedor};
  for (std::string& registro : registros) {
    const ClaseRegistro clase =
        registro[0] == '9' ? ClaseRegistro::TotalesGenerales : kClases[registro[1] - '1'];
    for (const TotalDebido& total : totales.dar(registro, clase))
      EscribirCampo(registro, total.donde, CifrasDe(total.valor, total.donde.longitud()));
  }
  return registros;
}

inline std::string Unidos(const std::vector<std::string>& registros, std::string_view fin = "\r\n") {
  std::string bytes;
  for (const std::string& registro : registros)
    bytes.append(registro).append(fin);
  return bytes;
}

class Devueltos : public Carpeta {
 protected:
  Devueltos() { comunes::PonerLocaleUsuario(QLocale(QLocale::Spanish, QLocale::Spain)); }
  ~Devueltos() override { comunes::PonerLocaleUsuario({}); }

  const FicheroLeido& leer(const std::string& bytes, const std::string& nombre = "dev.Q19") {
    return lote_.leer(escribir(nombre, bytes));
  }
  static std::filesystem::path ejemplo(const std::string& nombre) {
    return std::filesystem::path(DIR_EJEMPLOS) / nombre;
  }
  Lote lote_;
};

/// "clase×cuenta@registro dicho≠debido" de cada aviso, que además se explica.
inline std::string Avisos(const FicheroLeido& fichero) {
  std::string texto;
  for (const AvisoLectura& aviso : fichero.avisos) {
    EXPECT_FALSE(TextoAviso(aviso, fichero.forma).contains(u'%'))
        << TextoAviso(aviso, fichero.forma).toStdString();
    EXPECT_FALSE(TextoAviso(aviso, fichero.forma).contains(u';'));
    texto += (texto.empty() ? "" : " ") + std::to_string(static_cast<int>(aviso.clase)) + "x" +
             std::to_string(aviso.cuenta) + "@" + std::to_string(aviso.registro);
    if (aviso.dicho) texto += ":" + std::to_string(*aviso.dicho) + "!" + std::to_string(aviso.debido);
  }
  return texto;
}

inline std::string Aviso(ClaseAviso clase, const std::string& resto) {
  return std::to_string(static_cast<int>(clase)) + "x" + resto;
}

inline std::string Xml(const char* mensaje, const std::string& cuerpo) {
  return "<?xml version='1.0'?><n:Document xmlns:n='x'><n:" + std::string(mensaje) + ">" + cuerpo +
         "</n:" + mensaje + "></n:Document>";
}

}  // namespace pruebas
