#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <optional>

#include "comunes/dialogos/MyBox.h"
#include "comunes/herramientas/Clientes.h"
#include "comunes/herramientas/FichaContacto.h"
#include "comunes/herramientas/ImportacionClientes.h"
#include "comunes/herramientas/ListaContactos.h"
#include "comunes/herramientas/Telefonos.h"
#include "comunes/impresion/ImprimirListado.h"
#include "comunes/impresion/Progreso.h"
#include "comunes/plataforma/Explorar.h"
#include "comunes/plataforma/IniFiles.h"
#include "comunes/plataforma/LecturaTexto.h"
#include "comunes/plataforma/Ventanas.h"
#include "ui_Telefonos.h"

// Las órdenes de la agenda: lo que hace cada botón.
namespace herramientas {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 kMaximoClientes = 64 * 1024 * 1024;

QString TextoFin(FinCambio fin) {
  switch (fin) {
    case FinCambio::Hecho:
    case FinCambio::NoQuitado:
      return {};
    case FinCambio::Mezclado:
      return u"Otro programa ha cambiado a la vez otros datos de este contacto.;;Quedan los cambios de los dos."_s;
    case FinCambio::Conservados:
      return u"Otro programa ha cambiado a la vez los mismos datos de este contacto.;;Quedan los dos "
             u"contactos: "
             "compruebe cuál vale."_s;
    case FinCambio::Recuperado:
      return u"Otro programa ha quitado este contacto mientras lo cambiaba.;;Vuelve a estar, con sus cambios."_s;
  }
  return {};
}

int AnchoTabla(const comunes::Rejilla& rejilla) {
  int ancho = 0;
  for (int columna = 0; columna < rejilla.Cols(); ++columna)
    ancho += rejilla.ColWidth(columna);
  return ancho;
}

}  // namespace

bool Telefonos::hacer(const std::function<void(Agenda&)>& cambio) {
  try {
    const comunes::Reloj reloj;
    std::optional<comunes::Avance> avance;
    fichero_.cambiar(cambio, [&](const QString& quien, qint64 llevado, qint64 maximo) {
      if (!avance) avance.emplace(u"Esperando a que suelte la agenda %1…"_s.arg(quien));
      return avance->avanzar(static_cast<double>(llevado), static_cast<double>(maximo));
    });
  } catch (const AgendaOcupada& ocupada) {
    mostrar();
    comunes::Avisar(u"No se ha guardado: la agenda la tiene %1.;;Vuelva a intentarlo cuando la suelte."_s.arg(
                        ocupada.quien()),
                    QApplication::activeModalWidget());
    return false;
  } catch (...) {
    mostrar();  // lo que se haya leído antes de fallar
    throw;
  }
  vigia_.addPath(QFileInfo(fichero_.ruta()).path());
  mostrar();
  return true;
}

bool Telefonos::guardar(const std::optional<Contacto>& antes, const Contacto& despues) {
  refrescar();
  const QString identidad = IdentidadContacto(despues);
  for (const Contacto& otro : fichero_.agenda().contactos) {
    if (otro.clave == despues.clave || IdentidadContacto(otro) != identidad) continue;
    if (!comunes::Confirmar(
            u"Ya hay un contacto con ese nombre y ese número.;; ¿ Lo guarda de todas formas ? "_s, 2,
            QApplication::activeModalWidget()))
      return false;
    break;
  }
  FinCambio fin = FinCambio::Hecho;
  if (!hacer([&](Agenda& agenda) { fin = Aplicar(agenda, {antes, despues}); })) return false;
  elegir({despues.clave});
  const QString aviso = TextoFin(fin);
  if (!aviso.isEmpty()) comunes::Avisar(aviso, QApplication::activeModalWidget());
  return true;
}

void Telefonos::anadir() {
  decir({});
  Contacto nuevo;
  nuevo.clave = ClaveNueva();
  FichaContacto ficha(
      nuevo, [this](const Contacto& contacto) { return guardar(std::nullopt, contacto); }, this);
  ficha.exec();
}

void Telefonos::cambiar() {
  const QStringList claves = clavesElegidas();
  if (claves.size() != 1) return;
  const Agenda vista = fichero_.agenda();
  const auto elegido =
      std::find_if(vista.contactos.begin(), vista.contactos.end(),
                   [&](const Contacto& contacto) { return contacto.clave == claves.front(); });
  if (elegido == vista.contactos.end()) return;
  decir({});
  // Una copia: la lista cambia con la ficha abierta.
  const Contacto antes = *elegido;  // NOLINT(performance-unnecessary-copy-initialization)
  FichaContacto ficha(
      antes, [&](const Contacto& contacto) { return guardar(antes, contacto); }, this);
  ficha.exec();
}

void Telefonos::quitar() {
  std::vector<Contacto> vistos;
  Agenda vista = fichero_.agenda();
  for (const QString& clave : clavesElegidas())
    if (const Contacto* contacto = vista.buscar(clave)) vistos.push_back(*contacto);
  if (vistos.empty()) return;
  const QString cuales =
      vistos.size() == 1 ? vistos.front().datos[kNombre] : u"los %1 contactos elegidos"_s.arg(vistos.size());
  if (!comunes::Confirmar(u" ¿ Confirma que desea quitar %1 ? "_s.arg(cuales), 2, this)) return;
  std::size_t quedan = 0;
  const bool hecho = hacer([&](Agenda& agenda) {
    for (const Contacto& visto : vistos)
      if (Aplicar(agenda, {visto, std::nullopt}) == FinCambio::NoQuitado) ++quedan;
  });
  if (!hecho) return;
  const std::size_t quitados = vistos.size() - quedan;
  decir(quitados == 1 ? u"1 contacto quitado"_s : u"%1 contactos quitados"_s.arg(quitados));
  if (quedan > 0)
    comunes::Avisar(
        u"Otro programa ha cambiado a la vez lo que iba a quitar.;;Compruébelo: sigue en la lista."_s, this);
}

void Telefonos::importar() {
  decir({});
  const QString carpeta = comunes::ReadINI(comunes::RutaAjustes, u"Comunes"_s, u"ClientesZor"_s, {});
  const QString ruta = comunes::DialogoFichero(true, this, carpeta, u"@*.csv;*.txt"_s, false, {});
  if (ruta.isEmpty()) return;
  refrescar();
  const ImportacionClientes importacion =
      LeerClientes(comunes::LeerBytes(ruta, kMaximoClientes), fichero_.agenda());
  if (!importacion.fallo.isEmpty()) return comunes::Avisar(importacion.fallo, this);
  if (Clientes(importacion, QDir::toNativeSeparators(ruta), this).exec() != QDialog::Accepted) return;
  int anadidos = 0;
  if (!hacer([&](Agenda& agenda) { anadidos = AnadirClientes(agenda, importacion); })) return;
  decir(anadidos == 1 ? u"1 contacto añadido"_s : u"%1 contactos añadidos"_s.arg(anadidos));
}

void Telefonos::imprimir() {
  decir({});
  // Otra rejilla: en la de la pantalla está señalada la columna por la que se ordena.
  comunes::Rejilla visor(u"VisorTelefonos"_s);
  ListarContactos(visor, fichero_.agenda(), ui_->Buscado->text(), orden_, false);
  const QString buscado = EnUnaLinea(ui_->Buscado->text());
  const QString subtitulo = buscado.isEmpty() ? QString() : u"Buscado: "_s + buscado;
  const QString titulo = u"Teléfonos"_s;
  comunes::ListadoImprimible listado;
  listado.padre = this;
  listado.anchoTabla = AnchoTabla(visor);
  listado.rotulos = [&] { return comunes::RotulosListado{titulo, titulo, titulo}; };
  listado.imprimir = [&](comunes::TrabajoImpresion& trabajo, const comunes::AvanceImpresion& avance) {
    return comunes::ImprimirRejilla(trabajo, visor, titulo, true, subtitulo, true, -1, -1, false, true, {},
                                    avance);
  };
  const comunes::FinListado fin = comunes::ImprimirListado(listado);
  decir(fin.mensaje, fin.documento);
}

void Telefonos::copiar() {
  QStringList lineas;
  const QModelIndexList elegidas = ui_->Visor->selectionModel()->selectedRows(kColumnaClave);
  for (const QModelIndex& indice : elegidas) {
    QStringList datos;
    for (int columna = kColumnaClave + 1; columna < rejilla_.Cols(); ++columna)
      datos += rejilla_.TextMatrix(modelo_.FilaRejilla(indice.row()), columna);
    lineas += datos.join(u'\t');
  }
  if (!lineas.isEmpty()) QGuiApplication::clipboard()->setText(lineas.join(u'\n'));
}

}  // namespace herramientas
