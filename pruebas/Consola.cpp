#include "EnCarpeta.h"

#include <QJsonDocument>
#include <QJsonObject>

using namespace pruebas;

namespace {

using namespace Qt::StringLiterals;

class PruebaConsola : public EnCarpeta {
 protected:
  Salida q19(const QStringList& argumentos) const { return ejecutar(PROGRAMA_Q19, argumentos); }

  static QString ejemplo(const char* nombre) { return u"" DIR_EJEMPLOS u"/"_s + nombre; }

  /// Los registros de la carpeta, sin los ocultos que empiezan por punto: lo que un fallo no debe cambiar.
  QStringList ficheros() const {
    return QDir(carpeta_.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
  }
};

QByteArrayList Registros(const QByteArray& bytes, const char* codigo) {
  QByteArrayList registros;
  for (const QByteArray& linea : bytes.split('\n'))
    if (linea.startsWith(codigo)) registros += linea;
  return registros;
}

// Conservación: cada adeudo sale una vez y en su orden, bajo la primera cabecera, y los totales son su suma.
TEST_F(PruebaConsola, UneLosEjemplos) {
  const QStringList nombres{ejemplo("gimnasio-acuario.Q19"), ejemplo("aguas-con-optativos.Q19"),
                            ejemplo("academia-dos-cobros.Q19"), ejemplo("comunidad-fuente-nora.Q19")};
  const Salida s = q19(QStringList{"unir", "-o", "todo.txt"} + nombres);
  ASSERT_EQ(s.codigo, 0) << s.avisado.toStdString();

  QByteArrayList adeudos;
  qint64 importe = 0;
  int cuantos = 0;
  for (const QString& nombre : nombres)
    adeudos += Registros(leer(nombre), "03");
  for (const QByteArray& adeudo : adeudos)
    if (adeudo.mid(7, 3) == "003") importe += adeudo.mid(88, 11).toLongLong(), ++cuantos;
  const QByteArray unida = leer(ruta("todo.Q19"));
  EXPECT_EQ(Registros(unida, "03"), adeudos);
  EXPECT_EQ(Registros(unida, "01") + Registros(unida, "02"),
            Registros(leer(nombres[0]), "01") + Registros(leer(nombres[0]), "02"));
  ASSERT_EQ(Registros(unida, "99").size(), 1);
  EXPECT_EQ(Registros(unida, "99")[0].left(37),
            "99" + QByteArray::number(importe).rightJustified(17, '0') +
                QByteArray::number(cuantos).rightJustified(8, '0') +
                QByteArray::number(unida.count('\n')).rightJustified(10, '0'));

  EXPECT_EQ(s.dicho.toStdString(),
            u"Ficheros: 4\nAdeudos: %1\nTotal: 6.439,76 €\nEscrito: %2\n"_s.arg(cuantos)
                .arg(ruta("todo.Q19"))
                .toStdString());
  EXPECT_TRUE(s.avisado.contains("aguas-con-optativos.Q19: aviso:")) << s.avisado.toStdString();
}

TEST_F(PruebaConsola, NoEscribeNadaSiAlgoFalla) {
  const QByteArray buena = leer(ejemplo("gimnasio-acuario.Q19"));
  const QString corta = escribir("corta.Q19", buena.left(602 * 3) + "04 corto\r\n");
  const QString enorme = escribir("enorme.Q19", buena.left(602) + QByteArray(buena).mid(1204, 88) +
                                                    "02147483647" + QByteArray(501, ' ') + "\r\n");
  escribir("salida.Q19", "lo de antes");
  const struct {
    QStringList ficheros;
    QStringList avisos;
  } casos[] = {
      {{ejemplo("no-es-una-remesa.Q19"), ejemplo("cuaderno-19-antiguo.Q19"), "falta.Q19",
        ejemplo("gimnasio-acuario.Q19")},
       {"no-es-una-remesa.Q19: El archivo no parece ser tipo Q19",
        "antiguo.Q19: Versión incorrecta de archivo Q19", "falta.Q19: No se encontró el archivo (error 53)"}},
      {{corta, ejemplo("gimnasio-acuario.Q19")},
       {"corta.Q19: Argumento o llamada a procedimiento no válida (error 5) en el registro 4"}},
      {{ejemplo("gimnasio-acuario.Q19"), enorme}, {"enorme.Q19: Desbordamiento (error 6) en el registro 2"}},
      {{carpeta_.path()}, {"(error 75)"}},
  };
  const QStringList antes = ficheros();
  for (const auto& caso : casos) {
    const Salida s = q19(QStringList{"unir", "--salida", "salida"} + caso.ficheros);
    EXPECT_EQ(s.codigo, 1);
    EXPECT_EQ(s.dicho, "");
    for (const QString& aviso : caso.avisos)
      EXPECT_TRUE(s.avisado.contains(aviso)) << aviso.toStdString() << " no está en\n"
                                             << s.avisado.toStdString();
    EXPECT_EQ(ficheros(), antes);
    EXPECT_EQ(leer(ruta("salida.Q19")), "lo de antes");
  }
  const Salida s = q19({"unir", "-o", "no/existe.Q19", ejemplo("gimnasio-acuario.Q19")});
  EXPECT_EQ(s.codigo, 1);
  EXPECT_TRUE(s.avisado.contains("no/existe.Q19: No se encontró la ruta de acceso (error 76)"))
      << s.avisado.toStdString();
}

TEST_F(PruebaConsola, RepetidosYSalidaSobreUnaEntrada) {
  escribir("Añil.Q19", leer(ejemplo("gimnasio-acuario.Q19")));
  std::filesystem::create_hard_link(ruta("Añil.Q19").toStdU16String(), ruta("duro.Q19").toStdU16String());
  const Salida s = q19({"unir", "-o", "Añil.Q19", "Añil.Q19", "./Añil.Q19", "duro.Q19",
                        ejemplo("comunidad-fuente-nora.Q19"), ruta("Añil.Q19")});
  EXPECT_EQ(s.codigo, 0) << s.avisado.toStdString();
  EXPECT_TRUE(s.avisado.contains("q19: duro.Q19: ya importado, se omite")) << s.avisado.toStdString();
  EXPECT_EQ(s.avisado.count("ya importado"), 3);
  EXPECT_TRUE(s.avisado.contains("Añil.Q19: sustituido el que había, de 30.100 bytes"))
      << s.avisado.toStdString();
  EXPECT_EQ(Registros(leer(ruta("Añil.Q19")), "03").size(), 45 + 20);
}

TEST_F(PruebaConsola, UnePorBloquesYSepara) {
  const QStringList nombres{ejemplo("gimnasio-acuario.Q19"), ejemplo("academia-dos-cobros.Q19")};
  const Salida unida = q19(QStringList{"unir", "--bloques", "--renovar", "-o", "todo"} + nombres);
  ASSERT_EQ(unida.codigo, 0) << unida.avisado.toStdString();
  EXPECT_TRUE(
      unida.dicho.startsWith("Ficheros: 2\nBloques: 3 (2 acreedores)\nAdeudos: 63\nTotal: 3.190,80 €\n"))
      << unida.dicho.toStdString();
  EXPECT_FALSE(unida.avisado.contains("irán al de la remesa")) << unida.avisado.toStdString();
  const QByteArray todo = leer(ruta("todo.Q19")), primera = leer(nombres[0]);
  EXPECT_EQ(todo.left(115), primera.left(115));
  EXPECT_NE(todo.mid(115, 30), primera.mid(115, 30));
  EXPECT_EQ(todo.mid(145, 13), primera.mid(145, 13)) << "lo del presentador";
  EXPECT_EQ(Registros(todo, "02").size(), 3);

  const Salida partes = q19({"separar", "todo.Q19", "-o", "partes", "--por", "acreedor"});
  ASSERT_EQ(partes.codigo, 0) << partes.avisado.toStdString();
  EXPECT_EQ(QDir(ruta("partes")).entryList(QDir::Files | QDir::Hidden),
            QStringList({"ES33000B99654105_20261201_1.Q19", "ES70000B99812034_20261201_2.Q19"}));
  const Salida otra = q19({"separar", "todo.Q19", "-o", "partes"});
  EXPECT_EQ(otra.codigo, 1);
  EXPECT_TRUE(otra.avisado.contains("ES33000B99654105_20261201_1.Q19: El archivo ya existe (error 58)"))
      << otra.avisado.toStdString();
  EXPECT_EQ(QDir(ruta("partes")).count() - 2, 2U);
  EXPECT_EQ(q19({"separar", "todo.Q19", "-o", "partes", "--cada", "5", "--por", "fecha"}).codigo, 2);

  // Un adeudo sin cabecera, en cualquiera de ellos: no se escribe nada.
  const QString mala = escribir("mala.Q19", primera.left(602) + primera.mid(602 * 2));
  const Salida no = q19(QStringList{"unir", "--bloques", "-o", "no"} + nombres + QStringList{mala});
  EXPECT_EQ(no.codigo, 1);
  EXPECT_TRUE(no.avisado.contains("mala.Q19: El registro 2 es un adeudo sin ninguna cabecera"))
      << no.avisado.toStdString();
  EXPECT_FALSE(QFile::exists(ruta("no.Q19")));
}

// Si de un fichero se perderían todos los adeudos no se escribe nada, salvo que se pida.
TEST_F(PruebaConsola, NoUneLoQueSePerderiaEntero) {
  const QByteArray buena = leer(ejemplo("gimnasio-acuario.Q19"));
  const auto conCodigos = [&](char decena) {
    QByteArray otra = buena;
    for (qsizetype i = 0; i < otra.size(); i += 602)
      if (otra[i] == '0') otra[i] = decena;
    return otra;
  };
  const QByteArray conLF = QByteArray(buena).replace("\r\n", "\n");
  const std::pair<QByteArray, const char*> casos[] = {
      {conLF, "sus líneas acaban solo en LF"},
      {buena.left(602) + conLF.mid(601), "sus líneas acaban solo en LF"},
      {conCodigos('1'), "es un fichero de adeudos rechazados"},
      {conCodigos('2'), "es un fichero de adeudos devueltos"},
      {conCodigos('3'), "es un fichero de solicitudes de cancelación de adeudos"},
      {buena.left(602 * 2), nullptr},  // no tiene adeudos que perder
  };
  escribir("buena.Q19", buena);
  for (const auto& [bytes, que] : casos) {
    SCOPED_TRACE(que);
    escribir("mala.Q19", bytes);
    for (const QStringList& opciones : {QStringList(), {"--bloques"}, {"--de-todos-modos"}}) {
      escribir("salida.Q19", "lo de antes");
      const Salida s = q19(QStringList{"unir", "-o", "salida", "buena.Q19", "mala.Q19"} + opciones);
      const bool une = que == nullptr || opciones.contains("--de-todos-modos");
      EXPECT_EQ(s.codigo, une ? 0 : 1) << s.avisado.toStdString();
      EXPECT_EQ(leer(ruta("salida.Q19")) != "lo de antes", une);
      EXPECT_TRUE(une || s.avisado.contains(QString("q19: mala.Q19: ") + que)) << s.avisado.toStdString();
    }
  }
}

TEST_F(PruebaConsola, NombreDeLaSalida) {
  ASSERT_TRUE(QDir(carpeta_.path()).mkpath("con.punto/dentro"));
  const QString nombres[][2] = {{"a.txt", "a.Q19"},
                                {"b", "b.Q19"},
                                {"./c", "c.Q19"},
                                {"con.punto/d.x", "con.punto/d.Q19"},
                                {"con.punto/e", "con.punto/e.Q19"},
                                {"con.punto/../f", "f.Q19"},
                                {"g.q19", "g.Q19"}};
  for (const auto& [dado, escrito] : nombres) {
    const Salida s = q19({"unir", "-o", dado, ejemplo("gimnasio-acuario.Q19")});
    EXPECT_EQ(s.codigo, 0);
    EXPECT_TRUE(s.dicho.contains("Escrito: " + ruta(escrito) + "\n")) << s.dicho.toStdString();
    EXPECT_TRUE(QFile::exists(ruta(escrito)));
  }
  for (const char* carpeta : {"con.punto/", ".", "con.punto/.."}) {
    const Salida s = q19({"unir", "-o", carpeta, ejemplo("gimnasio-acuario.Q19")});
    EXPECT_EQ(s.codigo, 1) << carpeta;
    EXPECT_TRUE(s.avisado.contains("es una carpeta (error 75)")) << s.avisado.toStdString();
  }
}

TEST_F(PruebaConsola, LineaDeOrdenes) {
  const struct {
    QStringList argumentos;
    int codigo;
    QString texto;
  } casos[] = {
      {{"--version"}, 0, "q19 "},
      {{"--help"}, 0, "Uso: q19 [OPCIONES] ORDEN"},
      {{"unir", "--help"}, 0, "Uso: q19 unir [OPCIONES] FICHERO..."},
      {{"iban", "-h"}, 0, "Uso: q19 iban"},
      {{}, 2, "falta la orden"},
      {{"--nada"}, 2, "sobra o no se conoce: --nada"},
      {{"nada", "a.Q19"}, 2, "sobra o no se conoce: nada"},
      {{"unir"}, 2, "falta"},
      {{"unir", "a.Q19"}, 2, "falta --salida"},
      {{"unir", "-o", "b"}, 2, "falta FICHERO"},
      {{"unir", "a.Q19", "-o"}, 2, "le falta su valor"},
      {{"unir", "-o", "b", "-o", "c", "a.Q19"}, 2, "solo se puede dar una vez"},
      {{"unir", "-o", "", "a.Q19"}, 2, "vacía"},
      {{"unir", "-o", "b", "--raro", "a.Q19"}, 2, "sobra o no se conoce: --raro"},
      {{"iban", "ES91 2100 0418 4502 0005 1332", "iban es9121000418450200051332"},
       0,
       "IBAN ES91 2100 0418 4502 0005 1332: correcto\nIBAN ES91 2100 0418 4502 0005 1332: correcto\n"},
      {{"iban", "ES91 2100 0418 4502 0005 1333", ""}, 1, "dígitos de control incorrectos"},
      {{"nif", "12.345.678", "00000023?", " 1 "}, 0, "12345678Z\n00000023T\n1R\n"},
      {{"nif", "12345678Z", "X1234567", "1,5", "00000000"}, 1, "12345678Z\nX1234567L\n1,5\n00000000\n"},
  };
  for (const auto& [argumentos, codigo, texto] : casos) {
    SCOPED_TRACE(argumentos.join(' ').toStdString());
    const Salida s = q19(argumentos);
    EXPECT_EQ(s.codigo, codigo);
    EXPECT_TRUE((codigo == 2 ? s.avisado : s.dicho).contains(texto)) << (s.dicho + s.avisado).toStdString();
    for (const char* ingles : {"sage", "required", "OPTIONS", "REQUIRED", "expected", "ubcommand", "TEXT "})
      EXPECT_FALSE((s.dicho + s.avisado).contains(ingles)) << ingles << " en\n"
                                                           << (s.dicho + s.avisado).toStdString();
  }
}

// Un nombre que no es UTF-8, o que va entre corchetes, llega a su fichero tal cual.
TEST_F(PruebaConsola, NombresQueNoSonUtf8NiListas) {
  escribir("a", "0119143001\r\n");
  EXPECT_TRUE(q19({"ver", "[a]"}).avisado.contains("[a]: No se encontró el archivo"));
  EXPECT_TRUE(q19({"unir", "-o", "b", "[a]"}).avisado.contains("[a]: No se encontró el archivo"));
  const QByteArray guion = "cp '" DIR_EJEMPLOS "/gimnasio-acuario.Q19' $'a\\xf1o.Q19' && '" PROGRAMA_Q19
                           "' unir -o $'uni\\xf3n.x' $'a\\xf1o.Q19' && test -s $'uni\\xf3n.Q19' && rm *.Q19";
  const Salida s = ejecutar("bash", {"-c", QString::fromLatin1(guion)});
  EXPECT_EQ(s.codigo, 0) << s.avisado.toStdString();
}

// Las líneas acaban en CR, como al cargar; las que no son de un registro conocido se dicen y se ven.
TEST_F(PruebaConsola, VeLosRegistrosCampoPorCampo) {
  QByteArray adeudo = QByteArray("0319143003").leftJustified(600);
  adeudo.replace(88, 19, "0000012345020260315");
  const QString fichero = escribir("a.Q19", "0119143001\r\n" + adeudo + "\r0319143007\tRARO\n\r" +
                                                QByteArray(1 << 20, 'Q') + "\r99" + QByteArray(598, '0'));
  const auto ver = [&](const QStringList& opciones) { return q19(QStringList{"ver", fichero} + opciones); };
  const struct {
    const char* registro;
    QStringList lineas;
  } casos[] = {
      {"1", {"Registro 1: Cabecera del presentador (10 caracteres en lugar de 600)", "  Libre"}},
      {"2",
       {"Registro 2: Adeudo individual", "  Importe del adeudo                     00000123450  (1.234,50)",
        "  Fecha de firma del mandato             20260315  (15/03/2026)", "  Concepto"}},
      {"3",
       {"Registro 3: el tipo «03007» no tiene descripción en Tarvo.INI (16 caracteres en lugar de 600)",
        "  0319143007\uFFFDRARO\uFFFD"}},
      {"4",
       {"Registro 4: el tipo «QQ» no tiene descripción en Tarvo.INI (1048576 caracteres en lugar de 600)"}},
      {"5", {"Registro 5: Total general", "  Total de registros         0000000000  (0)"}},
  };
  for (const auto& [registro, lineas] : casos) {
    const Salida s = ver({"--registro", registro});
    EXPECT_EQ(s.codigo, 0) << s.avisado.toStdString();
    for (const QString& linea : lineas)
      EXPECT_TRUE(s.dicho.split('\n').contains(linea)) << linea.toStdString() << "\n"
                                                       << s.dicho.toStdString();
  }
  EXPECT_EQ(ver({}).dicho.count("Registro "), 5);
  EXPECT_TRUE(ver({"--registro", "05"}).dicho.startsWith("Registro 5:"));
  EXPECT_TRUE(ver({"--registro", "010"}).avisado.contains("no tiene registro 10:"));
  EXPECT_TRUE(ver({"--registro", "6"}).avisado.contains("no tiene registro 6: el último es el 5"));
  EXPECT_EQ(ver({"--registro", "6"}).codigo, 1);
  for (const char* malo : {"0", "-1", "dos", "9999999999999999999999"})
    EXPECT_EQ(ver({"--registro", malo}).codigo, 2) << malo;
}

TEST_F(PruebaConsola, CompruebaConLaNorma) {
  const QByteArray buena = leer(ejemplo("gimnasio-acuario.Q19"));
  QByteArray mala = buena;
  mala.replace(602 * 2 + 80, 4, "A\"\\\x01");
  const char raro[] = "\"\\/\b\f\t\x01\x1F\x7F\x80\x81\x9F\xD1\xFF";
  mala.replace(602 * 2 + 118, 70, QByteArray(raro).leftJustified(70));
  const QByteArray antes = leer(escribir("mala.Q19", mala));
  escribir("buena.Q19", buena);
  const Salida texto = q19({"comprobar", "buena.Q19", "mala.Q19", "--fecha", "20260101"});
  EXPECT_EQ(texto.codigo, 1);
  EXPECT_TRUE(texto.dicho.contains("\nbuena.Q19: sin errores y con "));
  EXPECT_TRUE(texto.dicho.contains("\nmala.Q19: registro 3, 81-84 Tipo de adeudo (\"\\/" +
                                   QString(6, QChar::ReplacementCharacter) + QString::fromUtf8("€") +
                                   QChar::ReplacementCharacter + QString::fromUtf8("ŸÑÿ, ")))
      << texto.dicho.toStdString();
  EXPECT_TRUE(texto.dicho.contains("\nmala.Q19: 1 error y "));

  const Salida json = q19({"comprobar", "mala.Q19", "--json", "--fecha=20260101"});
  EXPECT_EQ(json.codigo, 1);
  EXPECT_EQ(json.avisado, "");
  int errores = 0;
  for (const QString& linea : json.dicho.trimmed().split('\n')) {
    const QJsonObject objeto = QJsonDocument::fromJson(linea.toUtf8()).object();
    ASSERT_FALSE(objeto.isEmpty()) << linea.toStdString();
    QString debida = QString::fromUtf8(QJsonDocument(objeto).toJson(QJsonDocument::Compact));
    for (ushort c = 0x7F; c <= 0x9F; ++c)  // algunas terminales los obedecen
      debida.replace(QChar(c), u"\\u%1"_s.arg(c, 4, 16, QChar(u'0')));
    EXPECT_EQ(debida.toStdString(), linea.toStdString());
    if (objeto["nivel"] != "error") continue;
    ++errores;
    const QJsonObject esperado{{"fichero", "mala.Q19"},
                               {"nivel", "error"},
                               {"codigo", "E308"},
                               {"registro", 3},
                               {"desde", 81},
                               {"hasta", 84},
                               {"campo", "Tipo de adeudo"},
                               {"deudor", QString::fromUtf8("\"\\/\b\f\t\x01\x1F\x7F€\u0081ŸÑÿ")},
                               {"valor", "A\"\\\x01"},
                               {"esperado", "FNAL, FRST, OOFF o RCUR"}};
    for (const QString& clave : esperado.keys())
      EXPECT_EQ(objeto[clave], esperado[clave]) << clave.toStdString();
    EXPECT_FALSE(objeto["mensaje"].toString().isEmpty());
  }
  EXPECT_EQ(errores, 1);
  EXPECT_EQ(q19({"comprobar", "buena.Q19", "--json"}).codigo, 0);
  EXPECT_EQ(q19({"comprobar", "buena.Q19", "falta.Q19"}).codigo, 1);
  EXPECT_EQ(q19({"comprobar", "buena.Q19", "--fecha", "20260230"}).codigo, 2);
  EXPECT_EQ(leer(ruta("mala.Q19")), antes);
}

TEST_F(PruebaConsola, CorrigeLoQueTieneUnaRespuesta) {
  const QByteArray limpia = leer(u"" DIR_DATOS u"/limpias/un-acreedor.Q19"_s);
  QByteArray mala = limpia;
  mala.replace(602 * 2 + 118, 16, "JOS\xC9 \xABPE\xD1 A\xBB & S");
  mala.replace(602 * 3 + 80, 4, "FRST");
  mala.replace(602 * 16 + 45, 17, "00000000000000001");
  mala.chop(2 + 500);
  escribir("mala.Q19", mala);
  QByteArray buena = limpia;
  buena.replace(602 * 2 + 118, 16, "JOSE 'PEN A' + S");
  buena.replace(602 * 3 + 80, 4, "RCUR");
  mala.replace(602 * 2 + 118, 16, "JOSE 'PEN A' + S");

  const QStringList fecha{"--fecha", "20261005"};
  const Salida ensayo = q19(QStringList{"corregir", "mala.Q19", "--ensayo"} + fecha);
  EXPECT_EQ(ensayo.codigo, 0);
  EXPECT_EQ(
      ensayo.dicho.toStdString(),
      "mala.Q19: registro 3, 119-188 Nombre del deudor (JOSÉ «PEÑ A» & S, A0001): A301: "
      "«JOSÉ «PEÑ A» & S» → «JOSE 'PEN A' + S»\n"
      "mala.Q19: registro 4, 81-84 Tipo de adeudo (TALLERES LOGRONO SL, A0002): A406: «FRST» → «RCUR»\n"
      "mala.Q19: registro 17, 46-62 Total de importes: E403: «00000000000000001» → «00000000000360074»\n"
      "mala.Q19: registro 19, 101-600: E101: «100» → «600»\n"
      "Correcciones: 4 (1 A301, 1 A406, 1 E101, 1 E403)\nQueda: sin errores\n"
      "Ensayo: no se ha escrito nada\n");
  EXPECT_EQ(ficheros(), QStringList{"mala.Q19"});

  const Salida hecha = q19(QStringList{"corregir", "mala.Q19", "-o", "buena"} + fecha);
  EXPECT_EQ(hecha.codigo, 0);
  EXPECT_TRUE(hecha.dicho.endsWith("Escrito: " + ruta("buena.Q19") + "\n")) << hecha.dicho.toStdString();
  EXPECT_EQ(leer(ruta("buena.Q19")), buena);

  // Sobre la misma, y solo algo; los códigos y la entrada, en cualquier orden.
  const Salida solo =
      q19(QStringList{"corregir", "--solo", "A301", "mala.Q19", "-o", "mala.Q19", "--json"} + fecha);
  EXPECT_EQ(solo.codigo, 0) << solo.avisado.toStdString();
  EXPECT_EQ(solo.dicho.count('\n'), 2);
  const QJsonObject cambio = QJsonDocument::fromJson(solo.dicho.section('\n', 0, 0).toUtf8()).object();
  EXPECT_EQ(cambio["antes"].toString(), u"JOSÉ «PEÑ A» & S"_s);
  EXPECT_EQ(cambio["despues"].toString(), u"JOSE 'PEN A' + S"_s);
  EXPECT_EQ(cambio["registro"].toInt(), 3);
  EXPECT_EQ(leer(ruta("mala.Q19")), mala + QByteArray(500, ' ') + "\r\n");

  EXPECT_EQ(q19({"corregir", "mala.Q19"}).codigo, 2);
  EXPECT_EQ(q19({"corregir", "--ensayo"}).codigo, 2);
  EXPECT_EQ(q19({"corregir", "mala.Q19", "--ensayo", "--solo", "A402"}).codigo, 2);
  escribir("lf.Q19", QByteArray(limpia).replace("\r\n", "\n"));
  for (const QString& nombre : {u"lf.Q19"_s, ejemplo("cuaderno-19-antiguo.Q19"), u"falta.Q19"_s})
    EXPECT_EQ(q19({"corregir", nombre, "-o", "nada.Q19"}).codigo, 1);
  EXPECT_FALSE(ficheros().contains("nada.Q19"));
}

TEST_F(PruebaConsola, ListaEnUnPdfSinPantalla) {
  const QString remesa = ejemplo("gimnasio-acuario.Q19");
  const Salida s = q19({"listar", remesa, "--referencia", "--horizontal", "-o", "listado.pdf"});
  EXPECT_EQ(s.codigo, 0) << s.avisado.toStdString();
  EXPECT_EQ(s.avisado, "");
  const QString texto = ejecutar("pdftotext", {"-layout", ruta("listado.pdf"), "-"}).dicho;
  for (const char* trozo : {"Remesa al Cobro", "Referencia", "SOCIO00001-1", "2.129,55 € (45 recibos)"})
    EXPECT_TRUE(texto.contains(QString::fromUtf8(trozo))) << trozo << texto.toStdString();

  const QByteArray antes = leer(remesa);
  EXPECT_EQ(q19({"listar", remesa, "-o", remesa}).codigo, 1);
  EXPECT_EQ(leer(remesa), antes);
  EXPECT_EQ(q19({"listar", ejemplo("cuaderno-19-antiguo.Q19"), "-o", "x.pdf"}).codigo, 1);
  EXPECT_EQ(q19({"listar", remesa, "-o", "no hay/x.pdf"}).codigo, 1);
  EXPECT_EQ(q19({"listar", remesa}).codigo, 2);
  EXPECT_EQ(ficheros(), QStringList{"listado.pdf"});
}

}  // namespace
