#include "EnCarpeta.h"
#include "remesa/Comprobacion.h"
#include "remesa/Fichero.h"

using namespace Qt::StringLiterals;

class Ejemplos : public pruebas::EnCarpeta {};

// Los ejemplos son los que su programa genera, y ninguno más; y los que son remesas no tienen errores.
TEST_F(Ejemplos, SeRegeneranIgualesYSonCorrectos) {
  ASSERT_EQ(ejecutar("python3", {DIR_EJEMPLOS "/generar", carpeta_.path()}).codigo, 0);
  const QStringList nombres = QDir(DIR_EJEMPLOS).entryList({"*.Q19"});
  EXPECT_EQ(QDir(carpeta_.path()).entryList(QDir::Files), nombres);
  int remesas = 0;
  for (const QString& nombre : nombres) {
    SCOPED_TRACE(nombre.toStdString());
    const QString ejemplo = u"" DIR_EJEMPLOS u"/"_s + nombre;
    EXPECT_TRUE(leer(ruta(nombre)) == leer(ejemplo));
    if (remesa::ComprobarCabeza(ejemplo.toStdString()) != remesa::Cabeza::Q19) continue;
    ++remesas;
    constexpr remesa::Dia kHoy{std::chrono::year(2026), std::chrono::November, std::chrono::day(25)};
    EXPECT_EQ(remesa::ComprobarFichero(ejemplo.toStdString(), kHoy, [](remesa::Hallazgo&&) {}).errores, 0U);
  }
  EXPECT_GE(remesas, 4);
}
