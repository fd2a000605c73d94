#include "ventanas/principal/CopiaRegistros.h"

#include <QClipboard>
#include <QGuiApplication>

#include "comunes/impresion/Progreso.h"
#include "comunes/plataforma/Celdas.h"
#include "ficheros/ErrorEjecucion.h"
#include "ventanas/principal/CabeceraColumnas.h"
#include "ventanas/principal/TextoVisible.h"
#include "ventanas/principal/VistaRegistros.h"

namespace principal {

using namespace Qt::StringLiterals;

std::vector<std::size_t> Senalados(const VistaRegistros& vista) {
  std::vector<std::size_t> filas = vista.seleccion();
  if (filas.empty() && vista.actual() >= 0) filas.push_back(static_cast<std::size_t>(vista.actual()));
  return filas;
}

std::size_t Copiar(const VistaRegistros& vista, Copia como) {
  constexpr qsizetype kMaximo = 100'000'000;  // caracteres
  constexpr std::size_t kCadaCuantos = 512;   // registros, entre mirar si se detiene
  const std::vector<std::size_t> filas = Senalados(vista);
  if (filas.empty()) return 0;
  const QList<Columna> columnas = vista.cabecera().visibles();
  QString texto;
  if (como == Copia::Tabla) {
    QStringList titulos;
    for (const Columna columna : columnas)
      titulos << TituloColumna(columna);
    texto = comunes::FilaTabulada(titulos) + u'\n';
  }
  comunes::Avance avance(u"Copiando…"_s);
  for (std::size_t i = 0; i < filas.size(); ++i) {
    if (i % kCadaCuantos == 0)
      avance.avanzarODetener(static_cast<double>(i), static_cast<double>(filas.size()));
    const std::string_view registro = vista.lista()[filas[i]];
    if (como == Copia::Texto) {
      texto += TextoVisible(registro);
    } else {
      QStringList celdas;
      celdas.reserve(columnas.size());
      for (const Columna columna : columnas)
        celdas << TextoCelda(registro, filas[i] + 1, columna);
      texto += comunes::FilaTabulada(celdas);
    }
    texto += u'\n';
    if (texto.size() > kMaximo)
      throw ficheros::ErrorEjecucion(ficheros::kMemoriaInsuficiente, {},
                                     "son más de cien millones de caracteres, y no se ha copiado nada");
  }
  QGuiApplication::clipboard()->setText(texto);
  return filas.size();
}

}  // namespace principal
