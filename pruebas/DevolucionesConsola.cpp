#include <QJsonDocument>
#include <QJsonObject>

#include "EnCarpeta.h"

using namespace pruebas;
using namespace Qt::StringLiterals;

namespace {

class ConsolaDevoluciones : public EnCarpeta {
 protected:
  Salida devoluciones(const QStringList& argumentos) const {
    return ejecutar(PROGRAMA_Q19, QStringList{"devoluciones"} + argumentos);
  }
  static QString ejemplo(const char* nombre) { return u"" DIR_EJEMPLOS u"/"_s + nombre; }
};

const QString kRemesas = u"" DIR_EJEMPLOS u""_s;

QList<QJsonObject> Objetos(const QString& dicho) {
  QList<QJsonObject> objetos;
  for (const QString& linea : dicho.trimmed().split('\n')) {
    objetos += QJsonDocument::fromJson(linea.toUtf8()).object();
    EXPECT_EQ(QJsonDocument(objetos.back()).toJson(QJsonDocument::Compact), linea.toUtf8());
  }
  return objetos;
}

// En cada forma, lo que trae y null lo que no.
TEST_F(ConsolaDevoluciones, Json) {
  const QString fichero = ejemplo("devoluciones/gimnasio-devueltos.Q19");
  const Salida s = devoluciones({fichero, "--json"});
  EXPECT_EQ(s.codigo, 0);
  EXPECT_EQ(s.avisado, "");
  const auto objetos = Objetos(s.dicho);
  ASSERT_EQ(objetos.size(), 7);
  const QJsonObject primera{{"fichero", fichero},
                            {"alcance", "adeudo"},
                            {"referencia", "SOCIO00003-1226"},
                            {"mandato", "SEPA/ACU/00003"},
                            {"importe", 2450},
                            {"motivo", "AM04"},
                            {"texto", u"No había saldo"_s},
                            {"consejo", "Puede presentarse otra vez. Avise antes al deudor."},
                            {"textoBanco", QJsonValue::Null},
                            {"deudor", u"María del Carmen Echániz Fernández"_s},
                            {"cuenta", "ES2199931302641176447969"},
                            {"concepto", u"Cuota de mañanas, diciembre de 2026"_s},
                            {"fechaCobro", "2026-12-01"},
                            {"fechaDevolucion", "2026-12-03"},
                            {"ficheroOriginal", "PRE2026112412003000000ACUARIO000000"},
                            {"bloqueOriginal", QJsonValue::Null},
                            {"adeudos", QJsonValue::Null},
                            {"acreedor", "ES33000B99654105"},
                            {"cotejo", QJsonValue::Null}};
  EXPECT_EQ(objetos[0], primera);
  EXPECT_EQ(objetos[6]["motivo"], "ZZ01");
  EXPECT_EQ(objetos[6]["texto"], QJsonValue::Null);

  const auto bloque =
      Objetos(devoluciones({ejemplo("devoluciones/academia-rechazos.xml"), "--carpeta", kRemesas, "--json"})
                  .dicho)
          .at(1);
  EXPECT_EQ(bloque["alcance"], "bloque");
  EXPECT_EQ(bloque["adeudos"], 8);
  EXPECT_EQ(bloque["cotejo"], "hallado");
  for (const char* nada : {"referencia", "deudor", "fechaCobro", "acreedor"})
    EXPECT_EQ(bloque[nada], QJsonValue::Null) << nada;
}

TEST_F(ConsolaDevoluciones, TextoYTabla) {
  const QString fichero = ejemplo("devoluciones/comunidad-anotaciones.xml");
  const Salida texto = devoluciones({fichero, "--remesa", ejemplo("comunidad-fuente-nora.Q19")});
  EXPECT_EQ(texto.codigo, 0);
  for (const QString& trozo :
       {u": devoluciones en las anotaciones de la cuenta (camt.054), ANOTA20261209001\n"_s,
        u"Inigo Zubia Pena, 76,75 €: AM04, no había saldo. Puede presentarse otra vez."_s,
        u", cobro 05/12/2026, devuelto 08/12/2026, en comunidad-fuente-nora.Q19, registro 7\n"_s,
        u"  MD07 El deudor ha fallecido: 1 adeudo, 76,75 €\n"_s,
        u"  ES82000H50123470 Comunidad de Propietarios Plaza de la Fuente Ñora, 4: 2 adeudos, 153,50 €\n"_s,
        u"Total: 2 adeudos, 153,50 €\n"_s})
    EXPECT_TRUE(texto.dicho.contains(trozo)) << trozo.toStdString() << "\n" << texto.dicho.toStdString();
  EXPECT_TRUE(texto.avisado.contains(u"aviso: 1 anotación que no es una devolución: no se enseña."_s));

  const QByteArray malo = QByteArray(leer(ejemplo("devoluciones/gimnasio-devueltos.Q19")))
                              .replace("SOCIO00003-1226", "=1+1;\"a\"       ");
  const QStringList filas = devoluciones({escribir("malo.Q19", malo), "--csv"}).dicho.split(u"\r\n"_s);
  EXPECT_EQ(filas.size(), 9);
  EXPECT_TRUE(filas[0].startsWith(u"Nombre;Importe;Cuenta;Referencia;Mandato;Código;Motivo;"_s));
  EXPECT_TRUE(
      filas[1].startsWith(u"María del Carmen Echániz Fernández;24,50;ES21 9993 1302 6411 7644 7969;"
                          "\"'=1+1;\"\"a\"\"\";SEPA/ACU/00003;AM04;No había saldo;"_s))
      << filas[1].toStdString();
}

TEST_F(ConsolaDevoluciones, RemesaNueva) {
  const QString devueltos = ejemplo("devoluciones/gimnasio-devueltos.Q19"),
                remesa = ejemplo("gimnasio-acuario.Q19");
  const QString propia = escribir("propia.Q19", leer(remesa));
  escribir("roto.xml", leer(ejemplo("devoluciones/aguas-rechazos.xml")).left(1500));
  const struct {
    QStringList argumentos;
    int codigo;
    int adeudos;  // -1, no se escribe
    QString dicho;
  } casos[] = {
      {{devueltos, "--remesa", propia, "--nueva", "n.Q19", "--fecha-cobro", "20270104"},
       0,
       3,
       u"Remesa nueva: 3 adeudos, 141,35 €, en n.Q19\n"_s},
      {{devueltos, "--carpeta", kRemesas, "--nueva", "n.Q19", "--motivos", "AC04,MD06,ZZ01"},
       0,
       3,
       u"156,75 €"_s},
      {{devueltos, "--remesa", propia, "--nueva", "n.Q19", "--motivos", "XXXX"},
       1,
       -1,
       u"n.Q19: no hay nada que presentar otra vez, no se escribe"_s},
      {{devueltos, "--nueva", "n.Q19"}, 1, -1, u"use --remesa o --carpeta"_s},
      {{devueltos, "--remesa", ejemplo("aguas-con-optativos.Q19"), "--nueva", "n.Q19"},
       1,
       -1,
       u"queda fuera María del Carmen Echániz Fernández, SOCIO00003-1226, 24,50: No está en las remesas buscadas"_s},
      {{devueltos, "falta.Q19", "--remesa", propia, "--nueva", "n.Q19"},
       1,
       -1,
       u"falta.Q19: No se encontró el archivo (error 53)"_s},
      {{devueltos, "roto.xml", "--remesa", propia, "--nueva", "n.Q19"},
       1,
       -1,
       u"algún fichero no se ha podido leer entero"_s},
      {{devueltos, "--remesa", devueltos}, 1, -1, u"es un fichero de adeudos devueltos, no una remesa"_s},
      {{devueltos, "--remesa", propia, "--nueva", propia},
       1,
       -1,
       u"no puede escribirse sobre un fichero que se lee"_s},
      {{remesa}, 1, -1, u"es una remesa de adeudos, no un fichero de devoluciones"_s},
      {{devueltos, "--remesa", "a", "--carpeta", "b"}, 2, -1, u"no puede ir con"_s},
      {{devueltos, "--motivos", "AM04"}, 2, -1, u"--motivos pide también --nueva"_s},
      {{devueltos, "--nueva", "n.Q19", "--fecha-cobro", "20260230"}, 2, -1, u"--fecha-cobro: ha de ser"_s}};
  for (const auto& caso : casos) {
    SCOPED_TRACE(caso.argumentos.join(u' ').toStdString());
    QFile::remove(ruta("n.Q19"));
    const Salida s = devoluciones(caso.argumentos);
    EXPECT_EQ(s.codigo, caso.codigo);
    EXPECT_TRUE((s.dicho + s.avisado).contains(caso.dicho)) << (s.dicho + s.avisado).toStdString();
    ASSERT_EQ(QFile::exists(ruta("n.Q19")), caso.adeudos >= 0);
    if (caso.adeudos < 0) continue;
    const QByteArray nueva = leer(ruta("n.Q19"));
    EXPECT_EQ(nueva.count("\r\n0319143003"), caso.adeudos);
    EXPECT_EQ(ejecutar(PROGRAMA_Q19, {"comprobar", "n.Q19", "--fecha", "20261210"}).codigo, 0);
  }
  // En XML, los mismos adeudos: en él se hallan otra vez.
  EXPECT_EQ(devoluciones({devueltos, "--remesa", propia, "--nueva", "n.xml"}).codigo, 0);
  const Salida otra = devoluciones({devueltos, "--remesa", "n.xml", "--nueva", "vuelta"});
  EXPECT_TRUE(otra.dicho.contains(u"Remesa nueva: 3 adeudos, 141,35 €, en vuelta.Q19\n"_s))
      << otra.avisado.toStdString();
  EXPECT_EQ(leer(propia), leer(remesa));
}

}  // namespace
