#include "ventanas/principal/Tanda.h"

#include <QFileInfo>
#include <algorithm>
#include <utility>

#include "comunes/plataforma/Texto.h"
#include "remesa/Campos.h"
#include "remesa/Observaciones.h"
#include "remesa/ObservacionesBloques.h"
#include "ventanas/principal/TextosObservacion.h"

namespace principal {

using namespace Qt::StringLiterals;
using Clase = remesa::ClaseObservacion;

namespace {

QString NombreDe(const QString& ruta) {
  return comunes::ConMarcasEscritas(QFileInfo(ruta).fileName());
}

}  // namespace

Tanda::Tanda(remesa::Resumen acumulado, std::optional<remesa::IndiceBloques> indice)
    : acumulado_(std::move(acumulado)), indice_(std::move(indice)) {}

void Tanda::repetir(const QString& ruta) {
  repetidos_ << NombreDe(ruta);
}

void Tanda::apartar(const QString& ruta, const QString& porque) {
  apartados_ << u"%1, que %2"_s.arg(NombreDe(ruta), porque);
}

void Tanda::tomar(const QString& ruta, remesa::ListaRegistros lista, const QStringList& perdidas) {
  RemesaDeTanda remesa{ruta, std::move(lista), {}, {}};
  remesa.resumen = remesa::Resumir(remesa.lista, true);
  auto observaciones = observar(remesa.resumen, remesa.lista);
  const auto hay = [&](Clase clase) {
    return std::ranges::find(observaciones, clase, &remesa::Observacion::clase) != observaciones.end();
  };
  if (hay(Clase::SinDueno))
    return apartar(ruta, u"tiene un adeudo sin ninguna cabecera de acreedor delante"_s);
  // Los bloques que tendrá no son nada que se pierda.
  std::erase_if(observaciones, [](const remesa::Observacion& o) { return o.clase == Clase::BloquesNuevos; });
  if (!indice_)
    if (const QString de = TextoMezcla(observaciones); !de.isEmpty())
      remesa.mezcla = u"%1, de %2"_s.arg(QFileInfo(ruta).fileName(), de);
  for (const QString& frase : perdidas + TextosObservaciones(observaciones))
    observado_ << u"%1: %2"_s.arg(NombreDe(ruta), frase);
  tomadas_.push_back(std::move(remesa));
}

/// Como si se importase: lo que sigue se compara con lo que habría.
std::vector<remesa::Observacion> Tanda::observar(const remesa::Resumen& resumen,
                                                 const remesa::ListaRegistros& lista) {
  if (!indice_) {
    auto observaciones = remesa::ObservarImportacion(resumen, acumulado_);
    acumulado_ = remesa::TrasImportar(acumulado_, resumen);
    return observaciones;
  }
  // Se mira antes de contarlo, que un fichero que se aparta no se puede descontar.
  const auto primero = std::ranges::find_if(lista, [](std::string_view registro) {
    const auto codigo = remesa::Codigo(registro);
    return codigo == remesa::CodigoRegistro::Acreedor || codigo == remesa::CodigoRegistro::Adeudo;
  });
  if (primero != lista.end() && remesa::Codigo(*primero) == remesa::CodigoRegistro::Adeudo)
    return {{Clase::SinDueno, 1, static_cast<std::size_t>(primero - lista.begin()) + 1}};
  indice_->empezarFichero();
  for (const std::string_view registro : lista)
    indice_->dar(registro);
  indice_->terminarFichero();
  return ObservarImportacion(resumen, *indice_);
}

QString Tanda::resultado(std::size_t ficheros, std::size_t adeudos, std::int64_t importe) const {
  QString texto = u"No se ha importado nada."_s;
  if (ficheros > 0)
    texto =
        u"Importados %1: %2, %3."_s.arg(TextoCuenta(ficheros, u"fichero"_s, u"ficheros"_s),
                                        TextoCuenta(adeudos, u"adeudo"_s, u"adeudos"_s), TextoEuros(importe));
  if (ficheros == 1) texto.replace(0, 10, u"Importado"_s);
  if (!apartados_.isEmpty())
    texto += u" No se %1 %2."_s.arg(apartados_.size() == 1 ? u"ha tomado"_s : u"han tomado"_s,
                                    apartados_.join(u", ni "_s));
  if (!repetidos_.isEmpty())
    texto +=
        u" Ya %1 %2."_s.arg(repetidos_.size() == 1 ? u"estaba"_s : u"estaban"_s, repetidos_.join(u", "_s));
  return texto;
}

}  // namespace principal
