#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include "remesa/Campos.h"
#include "remesa/Fichero.h"
#include "remesa/Observaciones.h"
#include "remesa/SEPA.h"

namespace {

using namespace Qt::StringLiterals;

QByteArray Leer(const QString& nombre) {
  QFile f(nombre);
  return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

QString SinBlancos(std::string_view texto) {
  return QString::fromLatin1(texto.data(), static_cast<qsizetype>(texto.size())).trimmed();
}

// Los ejemplos son los que su programa genera, y ninguno más.
TEST(Ejemplos, SeRegeneranIguales) {
  const QTemporaryDir nuevos;
  ASSERT_EQ(QProcess::execute("python3", {DIR_EJEMPLOS "/generar", nuevos.path()}), 0);
  const auto ficheros = [](const QString& carpeta, const QStringList& cuales) {
    QStringList nombres = QDir(carpeta).entryList(cuales, QDir::Files);
    for (const QString& nombre : QDir(carpeta + u"/devoluciones"_s).entryList(QDir::Files))
      nombres += u"devoluciones/"_s + nombre;
    return nombres;
  };
  const QStringList nombres = ficheros(DIR_EJEMPLOS, {"*.Q19"});
  EXPECT_EQ(ficheros(nuevos.path(), {"*"}), nombres);
  EXPECT_GE(nombres.size(), 12);
  for (const QString& nombre : nombres)
    EXPECT_TRUE(Leer(nuevos.filePath(nombre)) == Leer(u"" DIR_EJEMPLOS u"/"_s + nombre))
        << nombre.toStdString();
}

TEST(Ejemplos, SonRemesasCorrectas) {
  int remesas = 0;
  for (const QString& nombre : QDir(DIR_EJEMPLOS).entryList({"*.Q19"})) {
    SCOPED_TRACE(nombre.toStdString());
    const std::filesystem::path ruta = (u"" DIR_EJEMPLOS u"/"_s + nombre).toStdString();
    if (remesa::ComprobarCabeza(ruta) != remesa::Cabeza::Q19) continue;
    ++remesas;
    const remesa::ListaRegistros lista = remesa::LeerFichero(ruta);
    const remesa::Resumen resumen = remesa::Resumir(lista, true);
    EXPECT_TRUE(resumen.totalesSegunNorma);
    EXPECT_EQ(resumen.cortos.cuenta + resumen.largos.cuenta + resumen.descartados.cuenta +
                  resumen.opcionalesSueltos.cuenta,
              0U);
    for (const std::string_view registro : lista)
      for (const auto& [codigo, cuenta] :
           {std::pair("02", remesa::kCuentaAcreedor), std::pair("03", remesa::kCuentaDeudor)}) {
        const bool conCuenta =
            registro.starts_with(codigo) && registro.substr(7, 2) == "00" && registro[9] < '4';
        if (conCuenta) {
          EXPECT_TRUE(remesa::IBANValido(SinBlancos(LeerCampo(registro, cuenta)).toStdString())) << registro;
        }
      }
  }
  EXPECT_GE(remesas, 4);
}

}  // namespace
