#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>

#include "EnCarpeta.h"

using namespace pruebas;
using namespace Qt::StringLiterals;

namespace {

const QString kGimnasio = u"" DIR_EJEMPLOS u"/gimnasio-acuario.Q19"_s;

/// Una carpeta con una remesa del gimnasio, lo que le devolvieron en dos formas y un fichero ajeno.
class ConsolaAnteriores : public EnCarpeta {
 protected:
  void SetUp() override {
    QDir().mkpath(ruta("antes/dentro"));
    QDir().mkpath(ruta("academia"));
    escribir("antes/dentro/enviada.Q19", leer(kGimnasio));
    for (const char* vuelto : {"gimnasio-devueltos.Q19", "gimnasio-anotaciones.xml"})
      escribir(u"antes/"_s + vuelto, leer(u"" DIR_EJEMPLOS u"/devoluciones/"_s + vuelto));
    escribir("antes/nota.txt", "hola");
    escribir("otra.Q19", leer(kGimnasio).replace("PRE20261124", "PRE20261125"));
  }
  Salida q19(const QStringList& argumentos) const { return ejecutar(PROGRAMA_Q19, argumentos); }
  const QString nota_ = u"q19: antes/nota.txt: es un fichero que no es de adeudos, se omite\n"_s;
};

TEST_F(ConsolaAnteriores, Comprobar) {
  const Salida igual =
      q19({"comprobar", "--fecha", "20261124", "antes/dentro/enviada.Q19", "--anteriores", "antes"});
  EXPECT_FALSE(igual.dicho.contains("A4")) << igual.dicho.right(200).toStdString();
  EXPECT_TRUE(igual.avisado.contains(u"ya está guardado en antes/dentro/enviada.Q19"_s));
  EXPECT_TRUE(igual.avisado.endsWith(nota_));

  const Salida otra = q19(
      {"comprobar", "--fecha", "20261124", "otra.Q19", "--anteriores", "antes", "--meses", "1", "--json"});
  const QList<QString> lineas = otra.dicho.trimmed().split('\n');
  const QJsonObject ultima = QJsonDocument::fromJson(lineas.back().toUtf8()).object();
  EXPECT_EQ(QJsonDocument(ultima).toJson(QJsonDocument::Compact), lineas.back().toUtf8());
  EXPECT_EQ(ultima["codigo"], "A418");
  EXPECT_EQ(ultima["anterior"],
            QJsonObject({{"fecha", "20261201"}, {"fichero", "antes/dentro/enviada.Q19"}, {"registro", 47}}));
  EXPECT_TRUE(otra.dicho.contains(u"fue devuelto el 03/12/2026, motivo AM04 («No había saldo»)"_s));

  const Salida sinCarpeta = q19({"comprobar", "otra.Q19", "--anteriores", "nada"});
  EXPECT_EQ(sinCarpeta.codigo, 1);
  EXPECT_TRUE(sinCarpeta.avisado.startsWith("q19: nada: ")) << sinCarpeta.avisado.toStdString();
  EXPECT_EQ(q19({"comprobar", "otra.Q19", "--meses", "3"}).codigo, 2);
  EXPECT_EQ(q19({"comprobar", "otra.Q19", "--anteriores", "antes", "--meses", "0"}).codigo, 2);
}

// Lo enviado y lo que volvió, por fechas, busque como se busque.
TEST_F(ConsolaAnteriores, Buscar) {
  for (const QStringList& filtro : {QStringList{"--mandato", "SEPA/ACU/00003"},
                                    {"--cuenta", "IBAN ES21 9993 1302 6411 7644 7969"},
                                    {"--referencia", "SOCIO00003-1226"},
                                    {"--nombre", u"echaniz FERNÁNDEZ"_s}}) {
    SCOPED_TRACE(filtro[1].toStdString());
    const Salida s = q19(QStringList{"anteriores", "antes", "--json"} + filtro);
    EXPECT_EQ(s.codigo, 0);
    EXPECT_EQ(s.avisado, nota_);
    QStringList clases;
    for (const QString& linea : s.dicho.trimmed().split('\n')) {
      const QJsonObject objeto = QJsonDocument::fromJson(linea.toUtf8()).object();
      EXPECT_EQ(QJsonDocument(objeto).toJson(QJsonDocument::Compact), linea.toUtf8());
      EXPECT_EQ(objeto["importe"], 2450);
      clases += objeto["fecha"].toString() + u' ' + objeto["clase"].toString();
    }
    EXPECT_EQ(clases.first(2), (QStringList{"2026-12-01 adeudo", "2026-12-03 devuelto"}));
  }
  // De un bloque rechazado entero, solo lo de sus adeudos.
  for (const char* nombre : {"academia-dos-cobros.Q19", "devoluciones/academia-rechazos.xml"})
    escribir(u"academia/"_s + QString::fromLatin1(nombre).section(u'/', -1),
             leer(u"" DIR_EJEMPLOS u"/"_s + QString::fromLatin1(nombre)));
  const auto deAlumno = [&](const char* mandato) {
    return q19({"anteriores", "academia", "--mandato", mandato}).dicho.count("todo su bloque");
  };
  EXPECT_EQ(deAlumno("ALUMNO-281-09"), 0);
  EXPECT_EQ(deAlumno("ALUMNO-635-01"), 1);
}

}  // namespace
