#include <QFileInfo>
#include <filesystem>
#include <memory>
#include <system_error>

#include "comunes/impresion/Progreso.h"
#include "comunes/plataforma/Explorar.h"
#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/IniFiles.h"
#include "comunes/plataforma/Texto.h"
#include "comunes/plataforma/Ventanas.h"
#include "ficheros/ErrorEjecucion.h"
#include "remesa/Fichero.h"
#include "remesa/Guardado.h"
#include "ui_frmUnirQ19.h"
#include "ventanas/principal/LugarVacio.h"
#include "ventanas/principal/Navegador.h"
#include "ventanas/principal/TextosComprobacion.h"
#include "ventanas/principal/TextosObservacion.h"
#include "ventanas/principal/VistaRegistros.h"
#include "ventanas/principal/frmUnirQ19.h"

namespace principal {

using namespace Qt::StringLiterals;

QString frmUnirQ19::loQueSePierde(const QString& ruta) const {
  if (!ui_->Acumulado->lista().empty()) return {};
  const QString vacia = u"La remesa está vacía: el fichero quedaría vacío y se perdería lo que tiene, "_s;
  const std::filesystem::path fichero = comunes::ARuta(ruta);
  std::error_code error;
  const std::uintmax_t bytes = std::filesystem::file_size(fichero, error);
  if (error || bytes == 0) return {};
  const QString tamano = TextoCuenta(bytes, u"byte"_s, u"bytes"_s);
  try {
    if (remesa::ComprobarCabeza(fichero) == remesa::Cabeza::Q19) {
      comunes::Avance avance(u"Leyendo %1…"_s.arg(QFileInfo(ruta).fileName()));
      const remesa::Resumen resumen =
          remesa::ResumirFichero(fichero, [&](std::uintmax_t leidos, std::uintmax_t total) {
            avance.avanzarODetener(static_cast<double>(leidos), static_cast<double>(total));
          });
      return vacia + u"%1, %2 (%3)."_s.arg(TextoCuenta(resumen.adeudos, u"adeudo"_s, u"adeudos"_s),
                                           TextoEuros(resumen.importe), tamano);
    }
  } catch (const ficheros::ErrorEjecucion&) {
    // Lo que no se puede leer también se pierde.
  } catch (const comunes::TrabajoDetenido&) {
  }
  return vacia + tamano + u'.';
}

void frmUnirQ19::guardar() {
  const QString carpeta = comunes::ReadINI(comunes::RutaAjustes, u"Comunes"_s, u"DestinoQ19"_s, QString());
  const auto nombreFinal = [](const QString& elegido) {
    return comunes::QuitarExtension(elegido) + u".Q19"_s;
  };
  const QString elegido =
      comunes::DialogoFichero(false, this, carpeta, u"q19"_s, false, QString(), nombreFinal,
                              [this](const QString& ruta) { return loQueSePierde(ruta); });
  if (elegido.isEmpty()) return;
  const QString ruta = nombreFinal(elegido);
  // A la vez que se escribe: guardar no espera por la comprobación.
  auto veredicto = std::make_unique<Veredicto>(ui_->Acumulado->lista(), comunes::Hoy());
  try {
    const comunes::Reloj reloj;
    comunes::Avance avance(u"Guardando %1…"_s.arg(QFileInfo(ruta).fileName()));
    remesa::GuardarRemesa(
        comunes::ARuta(ruta), ui_->Acumulado->lista(), [&](std::size_t escritos, std::size_t total) {
          // Escrito todo, ya no hay qué detener: solo se espera a que llegue al disco.
          if (escritos < total)
            avance.avanzarODetener(static_cast<double>(escritos), static_cast<double>(total));
          else
            avance.avanzar(static_cast<double>(escritos), static_cast<double>(total));
        });
  } catch (const comunes::TrabajoDetenido&) {
    return decir(u"Guardado detenido: el fichero no se ha escrito y la remesa sigue aquí."_s);
  }
  cuantoGuardado_ = loQueHay();
  comparadaGuardada_ = antecedentes_->comparada();
  const bool vaciada = comoUnPaso(u"vaciar tras guardar"_s, [this] { ui_->Empezar->click(); });
  navegador_->refrescar();
  antecedentes_->refrescar();
  guardado_ = comunes::RutaAbsoluta(ruta);
  veredicto_ = std::move(veredicto);
  decir(u"Guardado %1. Comprobando…"_s.arg(dondeGuardado()));
  ui_->Deshacer->setVisible(vaciada);
  lugar_->ponerGuardado(guardado_, cuantoGuardado_, vaciada);
  veredicto_->alLlegar([this](const Veredicto::Resultado& resultado) { contarGuardado(resultado); });
}

QString frmUnirQ19::dondeGuardado() const {
  return cuantoGuardado_.isEmpty() ? u"en "_s + guardado_ : u"(%1) en %2"_s.arg(cuantoGuardado_, guardado_);
}

void frmUnirQ19::contarGuardado(const Veredicto::Resultado& resultado) {
  // Si ya se ha dado otra orden, el enlace desharía esa: no puede estar junto a lo que se dice de esta.
  const bool sigue = lugar_->conGuardado();
  const bool deshacible = sigue && !ui_->Deshacer->isHidden();
  const std::uint64_t errores = resultado ? resultado->errores + comparadaGuardada_.errores : 0;
  const std::uint64_t avisos = resultado ? resultado->avisos + comparadaGuardada_.avisos : 0;
  const QString recuento = resultado ? TextoRecuento(errores, avisos) : u"No se ha podido comprobar."_s;
  // El resultado, delante: una ruta larga se recorta.
  if (!resultado)
    decir(u"Guardado %1. %2"_s.arg(dondeGuardado(), recuento));
  else
    decir((errores > 0 ? u"Guardado con %1 %2"_s : u"Guardado %1 %2"_s).arg(recuento, dondeGuardado()));
  ui_->VerComprobacion->setVisible(!resultado || errores + avisos > 0);
  ui_->Deshacer->setVisible(deshacible);
  if (!sigue) return;
  lugar_->ponerGuardado(guardado_, cuantoGuardado_, deshacible);
  lugar_->ponerVeredicto(resultado ? u"Comprobada: "_s + recuento : recuento, errores > 0);
}

}  // namespace principal
