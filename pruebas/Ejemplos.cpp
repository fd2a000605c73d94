#include "EnCarpeta.h"
#include "remesa/Comprobacion.h"
#include "remesa/Fichero.h"

using namespace Qt::StringLiterals;

class Ejemplos : public pruebas::EnCarpeta {};

// Los ejemplos son los que su programa genera, y ninguno más; y los que son remesas no tienen errores.
TEST_F(Ejemplos, SeRegeneranIgualesYSonCorrectos) {
  ASSERT_EQ(ejecutar("python3", {DIR_EJEMPLOS "/generar", carpeta_.path()}).codigo, 0);
  const auto ficheros = [](const QString& carpeta, const QStringList& cuales) {
    QStringList nombres = QDir(carpeta).entryList(cuales, QDir::Files);
    for (const QString& nombre : QDir(carpeta + u"/devoluciones"_s).entryList(QDir::Files))
      nombres += u"devoluciones/"_s + nombre;
    return nombres;
  };
  const QStringList nombres = ficheros(DIR_EJEMPLOS, {"*.Q19"});
  EXPECT_EQ(ficheros(carpeta_.path(), {"*"}), nombres);
  EXPECT_GE(nombres.size(), 12);
  int remesas = 0;
  for (const QString& nombre : nombres) {
    SCOPED_TRACE(nombre.toStdString());
    const QString ejemplo = u"" DIR_EJEMPLOS u"/"_s + nombre;
    EXPECT_TRUE(leer(ruta(nombre)) == leer(ejemplo));
    if (nombre.contains(u'/') || remesa::ComprobarCabeza(ejemplo.toStdString()) != remesa::Cabeza::Q19)
      continue;
    ++remesas;
    constexpr remesa::Dia kHoy{std::chrono::year(2026), std::chrono::November, std::chrono::day(25)};
    EXPECT_EQ(remesa::ComprobarFichero(ejemplo.toStdString(), kHoy, [](remesa::Hallazgo&&) {}).errores, 0U);
  }
  EXPECT_GE(remesas, 4);
}
