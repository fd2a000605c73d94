#pragma once

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include "Cajas.h"
#include "Carpeta.h"
#include "Registros.h"
#include "comunes/plataforma/Explorar.h"
#include "comunes/plataforma/IniFiles.h"
#include "comunes/plataforma/Texto.h"
#include "ventanas/principal/ListaCarpetas.h"
#include "ventanas/principal/ListaDiscos.h"
#include "ventanas/principal/ListaFicheros.h"
#include "ventanas/principal/Navegador.h"
#include "ventanas/principal/VistaRegistros.h"
#include "ventanas/principal/frmUnirQ19.h"

namespace pruebas {

inline std::string Fichero(const std::vector<std::string>& registros, const char* fin = "\r\n") {
  std::string bytes;
  for (const std::string& registro : registros)
    bytes += registro + fin;
  return bytes;
}

/// Remesa entera con un adeudo por importe; los totales, a cero.
inline std::vector<std::string> Remesa(std::string_view fecha, std::initializer_list<const char*> importes) {
  std::vector<std::string> registros{Presentador(), Acreedor("ES02000B12345678", fecha)};
  for (const char* importe : importes)
    registros.push_back(Adeudo("REF" + std::string(importe), importe));
  for (const char* codigo : {"04", "05", "99"})
    registros.push_back(Total(codigo));
  return registros;
}

/// La ventana de verdad, manejada por sus controles.
struct Ventana {
  explicit Ventana(const std::filesystem::path& carpeta, const QString& lineaOrdenes = {})
      : frm(lineaOrdenes) {
    comunes::RutaAjustes = comunes::DesdeRuta(carpeta / "Tarvo.INI");
    frm.show();
    Carpetas->ponerRuta(comunes::DesdeRuta(carpeta));
    QCoreApplication::processEvents();
  }

  template <typename Control = QPushButton>
  Control* hijo(const char* nombre) {
    auto* control = frm.findChild<Control*>(QLatin1String(nombre));
    if (control == nullptr) ADD_FAILURE() << "falta " << nombre;
    return control;
  }
  void pulsar(const char* boton) { QTest::mouseClick(hijo(boton), Qt::LeftButton); }
  void elegir(const QString& nombre) {
    const QModelIndexList halladas = Ficheros->model()->match(Ficheros->model()->index(0, 0), Qt::DisplayRole,
                                                              nombre, 1, Qt::MatchFixedString);
    ASSERT_FALSE(halladas.isEmpty()) << nombre.toStdString();
    QTest::mouseClick(Ficheros->viewport(), Qt::LeftButton, {},
                      Ficheros->visualRect(halladas.first()).center());
  }
  void importar(const QString& nombre) {
    elegir(nombre);
    pulsar("Importar");
  }
  QString texto(const char* etiqueta) { return hijo<QLabel>(etiqueta)->text(); }
  /// Lo que dice la barra de estado cuando ha llegado la comprobación de lo guardado.
  QString veredicto() {
    EXPECT_TRUE(QTest::qWaitFor([this] { return !texto("EstadoMensaje").endsWith("Comprobando…"); }, 60'000));
    return texto("EstadoMensaje");
  }
  bool importado() { return hijo<QLabel>("Importado")->isVisible(); }
  std::vector<std::string> acumulado() { return Bytes(Acumulado->lista()); }

  principal::frmUnirQ19 frm;
  principal::ListaCarpetas* Carpetas = hijo<principal::ListaCarpetas>("Carpetas");
  principal::ListaFicheros* Ficheros = hijo<principal::ListaFicheros>("Ficheros");
  principal::VistaRegistros* Preview = hijo<principal::VistaRegistros>("Preview");
  principal::VistaRegistros* Acumulado = hijo<principal::VistaRegistros>("Acumulado");
};

/// El diálogo de ficheros contesta siempre esta ruta mientras vive.
struct ConDestino {
  explicit ConDestino(const std::filesystem::path& ruta)
      : anterior(comunes::PonerSelectorFicheros([ruta](const comunes::PeticionFicheros& peticion) {
          EXPECT_FALSE(peticion.abrir);
          return QStringList{comunes::DesdeRuta(ruta)};
        })) {}
  ~ConDestino() { comunes::PonerSelectorFicheros(anterior); }
  comunes::SelectorFicheros anterior;
};

}  // namespace pruebas
