#include <QJsonDocument>
#include <QJsonObject>

#include "EnCarpeta.h"

using namespace pruebas;

namespace {

using namespace Qt::StringLiterals;

class PruebaConsolaXml : public EnCarpeta {
 protected:
  Salida q19(const QStringList& argumentos) const { return ejecutar(PROGRAMA_Q19, argumentos); }
  static QString ejemplo(const char* nombre) { return u"" DIR_EJEMPLOS u"/"_s + nombre; }
  QStringList ficheros() const {
    return QDir(carpeta_.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
  }
};

// De ida y de vuelta, por todas las órdenes que toman remesas.
TEST_F(PruebaConsolaXml, UnMensajeValeDondeValeUnaRemesa) {
  const QString remesa = ejemplo("academia-dos-cobros.Q19");
  const Salida s = q19({"xml", remesa, "-o", "m.xml"});
  EXPECT_EQ(s.codigo, 0) << s.avisado.toStdString();
  EXPECT_EQ(s.dicho.toStdString(),
            u"Mensajes: 1\nBloques: 4\nAdeudos: 18\nTotal: 1.061,25 €\nEscrito: m.xml\n"_s.toStdString());
  EXPECT_EQ(s.avisado.count("aviso A501"), 1) << s.avisado.toStdString();

  EXPECT_EQ(q19({"unir", "m.xml", "-o", "m.Q19"}).codigo, 0);
  EXPECT_EQ(q19({"xml", "m.Q19", "-o", "m2.xml"}).codigo, 0);
  EXPECT_EQ(leer(ruta("m2.xml")), leer(ruta("m.xml"))) << "y dos veces salen las mismas identificaciones";
  EXPECT_EQ(q19({"xml", "m.xml", "--version", "02", "-o", "v02.xml"}).codigo, 0);
  EXPECT_EQ(q19({"xml", "v02.xml", "-o", "m3.xml"}).codigo, 0);
  EXPECT_EQ(leer(ruta("m3.xml")), leer(ruta("m.xml")));
  for (const QStringList& opciones : {QStringList{}, QStringList{"--bloques"}}) {
    EXPECT_EQ(
        q19(QStringList{"unir", "m.xml", ejemplo("gimnasio-acuario.Q19"), "-o", "a.Q19"} + opciones).codigo,
        0);
    EXPECT_EQ(
        q19(QStringList{"unir", "m.Q19", ejemplo("gimnasio-acuario.Q19"), "-o", "b.Q19"} + opciones).codigo,
        0);
    EXPECT_EQ(leer(ruta("a.Q19")), leer(ruta("b.Q19")));
  }
  EXPECT_EQ(q19({"ver", "m.xml", "--registro", "2"}).dicho, q19({"ver", "m.Q19", "--registro", "2"}).dicho);
  EXPECT_EQ(q19({"xml", ejemplo("gimnasio-acuario.Q19"), "-o", "g.xml"}).codigo, 0);
  EXPECT_EQ(q19({"unir", "g.xml", "-o", "g.Q19"}).codigo, 0);
  EXPECT_EQ(q19({"comprobar", "g.xml", "--fecha=20260101"}).dicho.replace("g.xml", "g.Q19").toStdString(),
            q19({"comprobar", "g.Q19", "--fecha=20260101"}).dicho.toStdString());
  EXPECT_EQ(q19({"listar", "m.xml", "-o", "m.pdf"}).codigo, 0);
}

TEST_F(PruebaConsolaXml, ErroresOpcionesYSalidas) {
  QByteArray remesa = leer(ejemplo("gimnasio-acuario.Q19"));
  remesa.replace(602 * 2 + 88, 11, "00000000000");
  escribir("mala.Q19", remesa);
  escribir("salida-2.xml", "lo de antes");
  const QStringList antes = ficheros();
  const Salida mala = q19({"xml", "mala.Q19", "-o", "x.xml"});
  EXPECT_EQ(mala.codigo, 1);
  EXPECT_TRUE(mala.avisado.contains(u"mala.Q19: registro 3, 89-99 Importe del adeudo ("_s) &&
              mala.avisado.contains(u"): error E512: "_s) && mala.avisado.contains(u"con --omitir"_s))
      << mala.avisado.toStdString();
  for (const QStringList& argumentos :
       {QStringList{ejemplo("no-es-una-remesa.Q19"), "-o", "x.xml"}, QStringList{"falta.Q19", "-o", "x.xml"},
        QStringList{"mala.Q19", "-o", "mala.Q19", "--omitir"},
        QStringList{"mala.Q19", "-o", "no hay/x.xml", "--omitir"}})
    EXPECT_EQ(q19(QStringList{"xml"} + argumentos).codigo, 1) << argumentos.join(' ').toStdString();
  for (const QStringList& argumentos :
       {QStringList{"mala.Q19"}, QStringList{"mala.Q19", "-o", "x", "--version", "03"},
        QStringList{"mala.Q19", "-o", "x", "--cada", "0"},
        QStringList{"mala.Q19", "-o", "x", "--direcciones", "alguna"}})
    EXPECT_EQ(q19(QStringList{"xml"} + argumentos).codigo, 2) << argumentos.join(' ').toStdString();
  EXPECT_EQ(ficheros(), antes);

  const Salida json = q19({"xml", "mala.Q19", "-o", "x.xml", "--omitir", "--json"});
  EXPECT_EQ(json.codigo, 0);
  EXPECT_EQ(json.avisado, "");
  QStringList codigos;
  for (const QString& linea : json.dicho.trimmed().split('\n')) {
    const QJsonObject objeto = QJsonDocument::fromJson(linea.toUtf8()).object();
    codigos += objeto["codigo"].toString();
    EXPECT_EQ(objeto.keys().join(','),
              "campo,codigo,desde,deudor,esperado,fichero,hasta,mensaje,nivel,referencia,registro,valor");
  }
  EXPECT_EQ(codigos.join(' '), "E512 A501");

  // Un mensaje de los que harían falta no se puede escribir: ninguno.
  ASSERT_TRUE(QDir(carpeta_.path()).mkdir("otra-2.xml"));
  EXPECT_EQ(q19({"xml", "mala.Q19", "-o", "otra.xml", "--omitir", "--cada", "20"}).codigo, 1);
  EXPECT_FALSE(ficheros().contains("otra-1.xml"));
  const Salida varios = q19({"xml", "mala.Q19", "-o", "salida.xml", "--omitir", "--cada", "20"});
  EXPECT_EQ(varios.codigo, 0);
  EXPECT_TRUE(
      varios.dicho.contains(u"Mensajes: 3\nBloques: 3\nAdeudos: 44\n"_s) &&
      varios.dicho.contains(u"Fuera, por tener errores: 1 adeudo, 0,00 €\n"_s) &&
      varios.dicho.endsWith(u"Escrito: salida-1.xml\nEscrito: salida-2.xml\nEscrito: salida-3.xml\n"_s))
      << varios.dicho.toStdString();
  EXPECT_FALSE(varios.avisado.contains(u"de otra vez"_s));
  EXPECT_TRUE(q19({"xml", "mala.Q19", "-o", "salida.xml", "--omitir", "--cada", "30"})
                  .avisado.contains(u"salida-3.xml: es de otra vez"_s));
  EXPECT_EQ(ficheros().join(' '), "mala.Q19 salida-1.xml salida-2.xml salida-3.xml x.xml");
}

}  // namespace
