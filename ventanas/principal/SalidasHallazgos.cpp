#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <algorithm>
#include <map>

#include "comunes/dialogos/MyBox.h"
#include "comunes/impresion/ImprimirListado.h"
#include "comunes/impresion/Progreso.h"
#include "comunes/plataforma/Explorar.h"
#include "comunes/plataforma/IniFiles.h"
#include "comunes/plataforma/Texto.h"
#include "comunes/plataforma/Ventanas.h"
#include "comunes/rejilla/MiVisor.h"
#include "devoluciones/Textos.h"
#include "ficheros/EscrituraSegura.h"
#include "ui_VentanaHallazgos.h"
#include "ventanas/principal/TextosComprobacion.h"
#include "ventanas/principal/TextosObservacion.h"
#include "ventanas/principal/VentanaHallazgos.h"

// Lo que sale de la ventana de comprobaciones: todo lo hallado, se vea o no.
namespace principal {

using namespace Qt::StringLiterals;

namespace {

const QString kTituloComprobacion = u"Comprobación de la remesa"_s;

QString CarpetaDestino() {
  return comunes::ReadINI(comunes::RutaAjustes, u"Comunes"_s, u"DestinoQ19"_s, {});
}

/// Las celdas de una fila separadas por tabuladores, sin ninguno dentro.
QString EnFilaDeTabla(const QStringList& celdas) {
  constexpr QChar kSeparador(0xE000);
  return comunes::SinControles(celdas.join(kSeparador)).replace(kSeparador, u'\t') + u'\n';
}

/// En el listado ";" es un cambio de línea.
QString EnListado(QString texto) {
  return comunes::SinControles(texto.replace(u';', u','));
}

}  // namespace

bool VentanaHallazgos::recorrer(const std::function<void(const remesa::Hallazgo&)>& recibir) const {
  if (!todos_.recortada && todos_.resultado.completa) {
    std::ranges::for_each(todos_.hallazgos, recibir);
    return true;
  }
  const comunes::Reloj reloj;
  comunes::Avance avance(u"Comprobando…"_s);
  const auto resultado =
      comprobada_.comprobar([&](remesa::Hallazgo&& hallazgo) { recibir(hallazgo); },
                            [&](std::uintmax_t mirados, std::uintmax_t total) {
                              return avance.avanzar(static_cast<double>(mirados), static_cast<double>(total));
                            });
  return resultado.completa;
}

void VentanaHallazgos::copiarElegidos() {
  QString tabla = EnFilaDeTabla(TitulosHallazgos());
  const std::vector<remesa::Hallazgo> cuales = elegidos();
  for (const remesa::Hallazgo& hallazgo : cuales)
    tabla += EnFilaDeTabla(CeldasHallazgo(hallazgo));
  QGuiApplication::clipboard()->setText(tabla);
  decir(u"Copiados: %1."_s.arg(TextoCuenta(cuales.size(), u"hallazgo"_s, u"hallazgos"_s)));
}

void VentanaHallazgos::copiar() {
  decir({});
  if (caducada_) comprobar();
  QString tabla = EnFilaDeTabla(TitulosHallazgos());
  std::size_t cuantos = 0;
  const bool todos = recorrer([&](const remesa::Hallazgo& hallazgo) {
    tabla += EnFilaDeTabla(CeldasHallazgo(hallazgo));
    ++cuantos;
  });
  if (!todos) return decir(u"Copia detenida: no se ha copiado nada."_s);
  QGuiApplication::clipboard()->setText(tabla);
  decir(u"Copiados: %1."_s.arg(TextoCuenta(cuantos, u"hallazgo"_s, u"hallazgos"_s)));
}

void VentanaHallazgos::imprimir() {
  constexpr std::uint64_t kMuchos = 10'000, kPorPagina = 55;
  decir({});
  if (caducada_) comprobar();
  const remesa::ResultadoComprobacion& resultado = todos_.resultado;
  const std::uint64_t hay = resultado.errores + resultado.avisos;
  if (hay == 0) return decir(u"No hay nada que imprimir."_s);
  if (hay > kMuchos && !comunes::Confirmar(u"Son %1: más de %2.;; ¿ Los imprime ? "_s.arg(
                                               TextoCuenta(hay, u"hallazgo"_s, u"hallazgos"_s),
                                               TextoCuenta(hay / kPorPagina, u"página"_s, u"páginas"_s)),
                                           2, this))
    return;
  // En una celda no caben frases: lo que hay que hacer va una vez, delante de los que se remedian igual.
  std::map<std::pair<remesa::CodigoHallazgo, QString>, std::vector<QStringList>> grupos;
  const bool todos = recorrer([&](const remesa::Hallazgo& h) {
    const QStringList celdas = CeldasHallazgo(h);
    grupos[{h.codigo, TextoQueHacer(h)}].push_back(
        {celdas[2], celdas[3], celdas[4], celdas[5], celdas[6], TextoQuePasa(h)});
  });
  if (!todos) return decir(u"Impresión detenida."_s);

  comunes::Rejilla visor(u"VisorComprobacion"_s);
  std::vector<comunes::SeccionListado> secciones;
  {
    const comunes::SinRedibujo quieta(visor);
    // En vertical caben hasta lo esperado; lo que pasa, además, en horizontal.
    comunes::PrepararRejilla(visor, u"Registro#8>;Deudor#24;Campo#24;Valor#20;Se esperaba#22;Qué pasa#50"_s);
    visor.PonerRows(visor.FixedRows() + static_cast<int>(hay));
    int fila = visor.FixedRows();
    for (const auto& [grupo, filas] : grupos) {
      const auto& [codigo, hacer] = grupo;
      const int desde = fila;
      for (const QStringList& celdas : filas) {
        for (int columna = 0; columna < celdas.size(); ++columna)
          visor.PonerTextMatrix(fila, columna, celdas[columna]);
        ++fila;
      }
      const QString cuenta = remesa::EsError(codigo) ? TextoCuenta(filas.size(), u"error"_s, u"errores"_s)
                                                     : TextoCuenta(filas.size(), u"aviso"_s, u"avisos"_s);
      secciones.push_back({kTituloComprobacion,
                           EnListado(u"%1, %2. %3"_s.arg(
                               QString::fromUtf8(remesa::TextoCodigo(codigo).data()), cuenta, hacer)),
                           desde, fila - 1});
    }
  }
  int ancho = 0;
  for (int columna = 0; columna < visor.Cols(); ++columna)
    ancho += visor.ColWidth(columna);
  comunes::ListadoImprimible listado;
  listado.padre = this;
  listado.anchoTabla = ancho;
  listado.carpeta = CarpetaDestino();
  listado.rotulos = [&] {
    return comunes::RotulosListado{kTituloComprobacion, kTituloComprobacion, kTituloComprobacion};
  };
  const QString subtitulo = u"%1: %2"_s.arg(comunes::ConMarcasEscritas(comprobada_.titulo()),
                                            TextoVeredicto(resultado.errores, resultado.avisos));
  listado.imprimir = [&](comunes::TrabajoImpresion& trabajo, const comunes::AvanceImpresion& avance) {
    return comunes::ImprimirSecciones(trabajo, visor, secciones, subtitulo, {}, avance);
  };
  const comunes::FinListado fin = comunes::ImprimirListado(listado);
  decir(fin.mensaje, fin.documento);
}

void VentanaHallazgos::guardar(const QString& extension, const std::string& cabeza,
                               const std::function<void(std::string&, const remesa::Hallazgo&)>& linea) {
  constexpr std::size_t kTrozo = std::size_t{1} << 16;
  decir({});
  if (caducada_) comprobar();
  const auto conExtension = [&](const QString& elegido) {
    const QString fin = u'.' + extension;
    return elegido.endsWith(fin, Qt::CaseInsensitive) ? elegido : elegido + fin;
  };
  const QString elegido = comunes::DialogoFichero(false, this, CarpetaDestino(), extension, false,
                                                  u"Comprobación.%1"_s.arg(extension), conExtension);
  if (elegido.isEmpty()) return;
  const QString ruta = comunes::RutaAbsoluta(conExtension(elegido));
  ficheros::EscrituraSegura salida(comunes::ARuta(ruta));
  std::string texto = cabeza;
  std::size_t cuantos = 0;
  const bool todos = recorrer([&](const remesa::Hallazgo& hallazgo) {
    linea(texto, hallazgo);
    ++cuantos;
    if (texto.size() < kTrozo) return;
    salida.escribir(texto);
    texto.clear();
  });
  if (!todos) return decir(u"Detenido: no se ha escrito el fichero."_s);
  salida.escribir(texto);
  salida.confirmar();
  decir(
      u"%1 en %2"_s.arg(TextoCuenta(cuantos, u"hallazgo"_s, u"hallazgos"_s), QDir::toNativeSeparators(ruta)));
}

void VentanaHallazgos::guardarCsv() {
  constexpr int kValor = 5, kEsperado = 6;
  guardar(u"csv"_s, (QChar::ByteOrderMark + devoluciones::LineaCsv(TitulosHallazgos())).toStdString(),
          [&](std::string& texto, const remesa::Hallazgo& hallazgo) {
            QStringList celdas = CeldasHallazgo(hallazgo);
            celdas[kValor] = CeldaValor(hallazgo);
            celdas[kEsperado] = CeldaEsperado(hallazgo);
            texto += devoluciones::LineaCsv(celdas).toStdString();
          });
}

void VentanaHallazgos::guardarJson() {
  const auto escapado = [](const QString& texto) { return comunes::CadenaJson(texto).sliced(1).chopped(1); };
  const comunes::EscritorUtf8 datos(escapado);
  const std::string fichero =
      escapado(comprobada_.fichero.isEmpty() ? comprobada_.titulo() : comprobada_.fichero).toStdString();
  guardar(u"json"_s, {}, [&](std::string& texto, const remesa::Hallazgo& hallazgo) {
    AnadirJson(texto, hallazgo, fichero, datos);
  });
}

}  // namespace principal
