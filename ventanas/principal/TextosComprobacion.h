#pragma once

#include <QString>
#include <cstdint>
#include <string>
#include <string_view>

#include "comunes/plataforma/Texto.h"
#include "remesa/Hallazgo.h"

namespace principal {

/// "error" o "aviso".
QLatin1String TextoNivel(remesa::CodigoHallazgo codigo);

/// Lo que hay en el fichero: fechas e importes, como se leen y en las unidades de lo esperado; lo demás, tal
/// como está.
QString TextoValor(const remesa::Hallazgo& hallazgo);

/// Lo que debería haber: el dato o los datos que valen o, si no se pueden enumerar, cómo son.
QString TextoEsperado(const remesa::Hallazgo& hallazgo);

/// Nombre del campo, como en la norma; vacío si no es de un campo.
QString TextoCampo(const remesa::Hallazgo& hallazgo);

/// Qué pasa y qué hacer, en frases.
QString TextoHallazgo(const remesa::Hallazgo& hallazgo);
QString TextoQuePasa(const remesa::Hallazgo& hallazgo);
QString TextoQueHacer(const remesa::Hallazgo& hallazgo);

/// El valor y lo esperado para una hoja de cálculo: los importes, con sus dos decimales tras una coma y nada
/// más.
QString CeldaValor(const remesa::Hallazgo& hallazgo);
QString CeldaEsperado(const remesa::Hallazgo& hallazgo);

// Los dos, en UTF-8 y al final de `texto`; los datos del fichero, como los escriba `datos`. Lo demás no lleva
// nada que haya que escapar en JSON.
void AnadirEsperado(std::string& texto, const remesa::Hallazgo& hallazgo, const comunes::EscritorUtf8& datos);
void AnadirHallazgo(std::string& texto, const remesa::Hallazgo& hallazgo, const comunes::EscritorUtf8& datos);

/// Un objeto JSON en una línea, con su fin. `fichero`, ya escapado; `datos` ha de escapar.
void AnadirJson(std::string& texto, const remesa::Hallazgo& hallazgo, std::string_view fichero,
                const comunes::EscritorUtf8& datos);

/// Cómo son los IBAN de un país que los tiene: "24 posiciones: ES, dos dígitos de control y 20 cifras".
void AnadirFormaIban(std::string& texto, std::string_view pais);

/// "sin errores", "sin errores y con 3 avisos", "2 errores y 1 aviso".
QString TextoRecuento(std::uint64_t errores, std::uint64_t avisos);
/// Lo mismo, suelto: "Sin errores", "Sin errores · 3 avisos", "2 errores · 1 aviso".
QString TextoVeredicto(std::uint64_t errores, std::uint64_t avisos);

}  // namespace principal
