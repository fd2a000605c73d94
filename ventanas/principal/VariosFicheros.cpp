#include <QApplication>
#include <QFileInfo>
#include <algorithm>
#include <vector>

#include "comunes/dialogos/MyBox.h"
#include "comunes/impresion/Progreso.h"
#include "comunes/plataforma/Texto.h"
#include "comunes/plataforma/Ventanas.h"
#include "ficheros/ErrorEjecucion.h"
#include "ui_frmUnirQ19.h"
#include "ventanas/principal/MenusArchivos.h"
#include "ventanas/principal/Navegador.h"
#include "ventanas/principal/Tanda.h"
#include "ventanas/principal/TextosObservacion.h"
#include "ventanas/principal/TomarRemesa.h"
#include "ventanas/principal/frmUnirQ19.h"

// Varios ficheros elegidos o soltados de una vez, y los menús de las listas de ficheros y de carpetas.

namespace principal {

using namespace Qt::StringLiterals;

namespace {

/// La razón de LeerRemesa, para seguir a una coma.
QString EnMinuscula(const QString& frase) {
  return frase.first(1).toLower() + frase.sliced(1);
}

RemesaTomada LeerConAvance(const QString& ruta, const QString& titulo) {
  comunes::Avance avance(titulo);
  return LeerRemesa(ruta, [&](std::uintmax_t leidos, std::uintmax_t total) {
    avance.avanzarODetener(static_cast<double>(leidos), static_cast<double>(total));
  });
}

}  // namespace

void frmUnirQ19::prepararVariosFicheros() {
  connect(navegador_, &Navegador::elegido, this, [this](const QString& ruta) {
    navegador_->elegidos().size() > 1 ? verElUltimo(ruta) : elegir(ruta);
  });
  connect(ui_->Importar, &QPushButton::clicked, this, [this] {
    const QStringList elegidos = navegador_->elegidos();
    if (elegidos.size() > 1) return importarFicheros(elegidos);
    comoUnPaso(u"importar "_s + QFileInfo(rutaPreview_).fileName(), [this] { importar(); });
  });
  const auto importado = [this](const QString& ruta) {
    return FicherosImportados.contains(u'[' + comunes::Mayusculas(ruta) + u']');
  };
  ui_->Ficheros->ponerImportado(
      [this, importado](const QString& nombre) { return importado(navegador_->rutaDe(nombre)); });
  new MenusArchivos(*ui_->Ficheros, *ui_->Carpetas, *navegador_,
                    {.ver =
                         [this](const QString& ruta) {
                           navegador_->irA(ruta);
                           elegir(ruta);
                         },
                     .importar = [this](const QStringList& rutas) { importarFicheros(rutas); },
                     .abrirDevoluciones = [this](const QString& ruta) { abrirDevoluciones({ruta}); },
                     .importado = importado,
                     .decir = [this](const QString& que) { decir(que); }},
                    this);
}

/// Enseña un fichero en `Preview` sin cajas de mensajes; si no se puede, dice por qué.
QString frmUnirQ19::verSinAvisar(const QString& ruta) {
  const QString marca = Marca(ruta);
  if (ruta == rutaPreview_ && marca == marcaPreview_) return {};
  try {
    if (const QString porque = PorQueNoSeToma(ruta); !porque.isEmpty()) return porque;
    const comunes::Reloj reloj;
    RemesaTomada tomada = LeerConAvance(ruta, u"Leyendo %1…"_s.arg(QFileInfo(ruta).fileName()));
    if (!tomada.rechazo.isEmpty()) return EnMinuscula(tomada.rechazo);
    ponerLeida(ruta, std::move(tomada), *ui_->Preview);
    previsualizado(ruta, marca);
    return {};
  } catch (const comunes::TrabajoDetenido&) {
    return u"se dejó de leer"_s;
  } catch (const ficheros::ErrorEjecucion& error) {
    return u"no se puede leer: %1"_s.arg(QString::fromStdString(error.texto()));
  }
}

/// De varios elegidos se ve `ruta`, el último; si no es una remesa, deja de estar elegido y se ve otro.
void frmUnirQ19::verElUltimo(const QString& ruta) {
  if (QApplication::activeModalWidget()) return;
  decir({});
  rechazo_.clear();
  QStringList candidatos = navegador_->elegidos();
  candidatos.removeOne(ruta);
  candidatos << ruta;
  QStringList rechazados;
  QString devuelto;
  while (!candidatos.isEmpty()) {
    const QString candidato = candidatos.takeLast();
    const QString porque = verSinAvisar(candidato);
    if (porque.isEmpty()) break;
    rechazados << u"%1, que %2"_s.arg(comunes::ConMarcasEscritas(QFileInfo(candidato).fileName()), porque);
    navegador_->dejar(candidato);
    if (TraeDevoluciones(candidato)) devuelto = candidato;
  }
  if (!rechazados.isEmpty()) rechazo_ = u"No se ha tomado %1."_s.arg(rechazados.join(u", ni "_s));
  ponerDevueltos(devuelto);
  if (navegador_->elegidos().isEmpty()) navegador_->resaltar(rutaPreview_);
  mostrarObservaciones();
}

void frmUnirQ19::importarFicheros(const QStringList& rutas) {
  if (QApplication::activeModalWidget()) return;
  decir({});
  Tanda tanda(resumenAcumulado_, conBloques() ? std::optional(indiceAcumulado_) : std::nullopt);
  QString importados = FicherosImportados;
  try {
    for (const QString& ruta : rutas) {
      const QString clave = u'[' + comunes::Mayusculas(ruta) + u']';
      if (importados.contains(clave)) {
        tanda.repetir(ruta);
        continue;
      }
      const std::size_t antes = tanda.tomadas().size();
      leerPara(tanda, ruta, u"Leyendo %1…"_s.arg(QFileInfo(ruta).fileName()));
      if (tanda.tomadas().size() > antes) importados += clave;
    }
  } catch (const comunes::TrabajoDetenido&) {
    return decir(u"Lectura detenida: no se ha importado nada."_s);
  }
  if (!tanda.observado().isEmpty() &&
      !comunes::Confirmar(u"Al importar se pierde o cambia:;;%1;;%2"_s.arg(
                              EnCaja(tanda.observado()),
                              tanda.tomadas().size() == 1 ? u"¿ Lo importa ?"_s : u"¿ Los importa ?"_s),
                          1))
    return decir(u"No se ha importado nada."_s);
  std::size_t ficheros = 0, adeudos = 0;
  std::int64_t importe = 0;
  const comunes::Reloj reloj;
  if (!tanda.tomadas().empty())
    comoUnPaso(u"importar %1"_s.arg(TextoCuenta(tanda.tomadas().size(), u"fichero"_s, u"ficheros"_s)), [&] {
      // Por bloques, de una vez: cada reunión ordena la remesa entera.
      std::vector<const remesa::ListaRegistros*> listas;
      listas.reserve(tanda.tomadas().size());
      for (const RemesaDeTanda& remesa : tanda.tomadas())
        listas.push_back(&remesa.lista);
      if (conBloques() && !reunirVarios(listas, u"No se ha importado nada."_s)) return;
      for (const RemesaDeTanda& remesa : tanda.tomadas()) {
        if (!conBloques()) juntar(remesa.lista);
        const QString clave = comunes::Mayusculas(remesa.ruta);
        FicherosImportados += u'[' + clave + u']';
        if (remesa.mezcla.isEmpty())
          mezclas_.remove(FicherosImportados);  // no una copia de la lista entera por fichero
        else
          mezclas_.insert(FicherosImportados, remesa.mezcla);
        rutasImportadas_.insert(clave, remesa.ruta);
        ++ficheros;
        adeudos += remesa.resumen.adeudos;
        importe += remesa.resumen.importe;
      }
      ui_->Importado->setVisible(FicherosImportados.contains(u'[' + FicheroActual + u']'));
      rechazo_.clear();
      if (conBloques())
        mostrarObservaciones();
      else
        RecalcularTotales();
    });
  decir(tanda.resultado(ficheros, adeudos, importe));
}

/// Lee un fichero y lo toma o lo aparta; lo que se está viendo no se lee otra vez.
void frmUnirQ19::leerPara(Tanda& tanda, const QString& ruta, const QString& titulo) const {
  try {
    if (ruta == rutaPreview_ && marcaPreview_ == Marca(ruta) && avisoDevoluciones().isEmpty())
      return tanda.tomar(ruta, ui_->Preview->lista(), perdidas_);
    if (const QString porque = PorQueNoSeToma(ruta); !porque.isEmpty()) return tanda.apartar(ruta, porque);
    RemesaTomada tomada = LeerConAvance(ruta, titulo);
    if (!tomada.rechazo.isEmpty()) return tanda.apartar(ruta, EnMinuscula(tomada.rechazo));
    tanda.tomar(ruta, std::move(tomada.lista), tomada.perdidas);
  } catch (const ficheros::ErrorEjecucion& error) {
    tanda.apartar(ruta, u"no se puede leer: %1"_s.arg(QString::fromStdString(error.texto())));
  }
}

void frmUnirQ19::soltar(const QStringList& rutas) {
  activateWindow();
  if (rutas.size() == 1) {
    navegador_->irA(rutas.first());
    if (QFileInfo(rutas.first()).isDir()) return;
    elegir(rutas.first());
    if (!devueltos_.isEmpty()) abrirDevoluciones({devueltos_});
    return;
  }
  QStringList remesas, devueltas;
  for (const QString& ruta : rutas) {
    if (QFileInfo(ruta).isDir()) continue;
    (TraeDevoluciones(ruta) ? devueltas : remesas) << ruta;
  }
  navegador_->elegirVarios(remesas);
  const QStringList elegidos = navegador_->elegidos();
  if (elegidos.size() > 1)
    verElUltimo(elegidos.last());
  else if (!elegidos.isEmpty())
    elegir(elegidos.first());
  else
    navegador_->resaltar(rutaPreview_);
  QStringList fuera;
  for (const QString& ruta : std::as_const(remesas))
    if (std::ranges::none_of(elegidos, [&](const QString& e) { return QFileInfo(e) == QFileInfo(ruta); }))
      fuera << QFileInfo(ruta).fileName();
  if (!fuera.isEmpty())
    decir(u"No se han elegido, por estar en otra carpeta o no ser de los que se enseñan: %1."_s.arg(
        fuera.join(u", "_s)));
  if (!devueltas.isEmpty()) abrirDevoluciones(devueltas);
}

}  // namespace principal
