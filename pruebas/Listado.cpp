#include <QDate>
#include <QLocale>
#include <QRegularExpression>

#include "comunes/impresion/DocumentoPdf.h"
#include "comunes/impresion/Listado.h"
#include "comunes/plataforma/Texto.h"
#include "comunes/rejilla/MiVisor.h"
#include "ficheros/ErrorEjecucion.h"
#include "pruebas/EnCarpeta.h"
#include "pruebas/EnEspana.h"
#include "remesa/Campos.h"
#include "ventanas/principal/Informe.h"

using namespace comunes;

namespace {

using namespace Qt::StringLiterals;

struct Palabra {
  double izquierda;
  double derecha;
  double arriba;
  QString texto;
};

std::string registro(std::initializer_list<std::pair<remesa::Posiciones, const char*>> campos) {
  std::string bytes(remesa::kLongitudRegistro, ' ');
  for (const auto& [donde, texto] : campos)
    remesa::EscribirCampo(bytes, donde, AWindows1252(QString::fromUtf8(texto)));
  return bytes;
}

remesa::ListaRegistros remesaDe(int adeudos) {
  remesa::ListaRegistros lista;
  lista.anadir(registro({{{1, 10}, "0119143001"}, {remesa::kFechaCreacion, "20261124"}}));
  lista.anadir(registro({{{1, 10}, "0219143002"},
                         {remesa::kFechaCobro, "20261201"},
                         {remesa::kNombreAcreedor, "CAÑADA Y MUÑOZ, S.L."},
                         {remesa::kCuentaAcreedor, "ES9121000418450200051332"}}));
  for (int i = 1; i <= adeudos; ++i) {
    lista.anadir(
        registro({{{1, 10}, "0319143003"},
                  {remesa::kReferenciaAdeudo, qPrintable(QString("R%1").arg(i))},
                  {remesa::kImporteAdeudo, qPrintable(QString("%1").arg(i * 1001, 11, 10, QChar('0')))},
                  {remesa::kNombreDeudor, qPrintable(QString("DEUDOR%1 ").arg(i, 4, 10, QChar('0')))},
                  {remesa::kCuentaDeudor, "ES9121000418450200051332"},
                  {remesa::kConcepto, "Cuota de 12 €, año 2026, de la ii/SIGUE41 y mas"}}));
  }
  // Un adeudo de otra clase no sale; uno con otro número de dato, sí.
  lista.anadir(registro({{{1, 10}, "0319143103"}, {remesa::kNombreDeudor, "NOSALE"}}));
  lista.anadir(registro(
      {{{1, 10}, "0319143004"}, {remesa::kImporteAdeudo, "12345678901"}, {remesa::kNombreDeudor, "GRANDE"}}));
  lista.anadir(registro(
      {{{1, 2}, "04"}, {remesa::kImporte04, "00000000000012345"}, {remesa::kAdeudos04, "00000007"}}));
  return lista;
}

class ElListado : public pruebas::EnCarpeta {
 protected:
  /// Lo que se lee en un PDF, con su sitio en twips desde la esquina del papel.
  std::vector<Palabra> palabras() const {
    static const QRegularExpression forma(
        u"xMin=\"([\\d.-]+)\" yMin=\"([\\d.-]+)\" xMax=\"([\\d.-]+)\" yMax=\"[\\d.-]+\">(.*)</word>"_s);
    std::vector<Palabra> leidas;
    auto halladas = forma.globalMatch(ejecutar("pdftotext", {"-bbox", pdf_, "-"}).dicho);
    while (halladas.hasNext()) {
      const auto hallada = halladas.next();
      leidas.push_back({hallada.captured(1).toDouble() * 20, hallada.captured(3).toDouble() * 20,
                        hallada.captured(2).toDouble() * 20, hallada.captured(4)});
    }
    return leidas;
  }
  QStringList lineas() const {
    QStringList todas;
    for (const QString& linea : ejecutar("pdftotext", {"-layout", pdf_, "-"}).dicho.split(u'\n'))
      if (!linea.trimmed().isEmpty()) todas << linea.simplified();
    return todas;
  }

  int paginas() const {
    return ejecutar("pdfinfo", {pdf_}).dicho.section("Pages:", 1).section(u'\n', 0, 0).trimmed().toInt();
  }
  void imprimir(int adeudos, bool referencia, bool apaisado, bool soloAdeudos = false) {
    informe = principal::PrepararInforme(visor, remesaDe(adeudos), "C:\\Ñ\\X.Q19", referencia, soloAdeudos);
    DocumentoPdf pdf(ARuta(pdf_), apaisado, informe.titulo);
    EXPECT_TRUE(principal::ImprimirInforme(pdf.trabajo(), visor, informe));
    pdf.confirmar();
  }
  pruebas::EnEspana espana{{2026, 11, 24}};
  QString pdf_ = ruta("listado.pdf");
  Rejilla visor{"VisorPrt"};
  principal::Informe informe;
};

}  // namespace

TEST_F(ElListado, SaleEnteroYEnOrdenConSusCabezas) {
  imprimir(130, false, false);
  EXPECT_EQ(paginas(), 3);
  const QStringList todas = lineas();
  QStringList deudores;
  int cabezas = 0;
  int titulos = 0;
  for (const QString& linea : todas) {
    if (linea.startsWith("DEUDOR")) deudores << linea;
    if (linea == QString("Fecha 24/11/2026 CAÑADA Y MUÑOZ, S.L. Página %1").arg(cabezas + 1)) ++cabezas;
    titulos += linea == "Nombre Importe IBAN Concepto";
  }
  EXPECT_EQ(cabezas, 3);
  EXPECT_EQ(titulos, 3);
  EXPECT_EQ(todas.count("Remesa al Cobro"), 3);
  ASSERT_EQ(deudores.size(), 130);
  for (int i = 1; i <= 130; ++i) {
    EXPECT_EQ(
        deudores[i - 1].toStdString(),
        QString("DEUDOR%1 %2 IBAN ES91 2100 0418 4502 0005 1332 Cuota de 12 €, año 2026, de la ii/SIGUE4")
            .arg(i, 4, 10, QChar('0'))
            .arg(FormatoCentimos(i * 1001))
            .toStdString());
  }
  const int total = static_cast<int>(todas.indexOf("Total 123.542.024,16"));
  ASSERT_GT(total, 0);
  EXPECT_EQ(todas[total - 1], "GRANDE 123.456.789,01");
  EXPECT_EQ(
      todas.mid(total + 1).join(u'|').toStdString(),
      "Emisor: CAÑADA Y MUÑOZ, S.L.|Fichero: C:\\Ñ\\X.Q19|Envío: 24/11/2026|Emisión: 01/12/2026|Cuenta: IBAN "
      "ES91 2100 0418 4502 0005 1332|Total: 123,45 € (7 recibos)|Incluye 1 registro que no es un adeudo "
      "(123.456.789,01 €). Adeudos: 130, "
      "85.235,15 €");
}

TEST_F(ElListado, SoloConAdeudosNoSumaLoQueNoLoEs) {
  imprimir(3, false, false, true);
  const QStringList todas = lineas();
  const auto total = todas.indexOf("Total 60,06");
  ASSERT_GT(total, 0);
  EXPECT_EQ(todas[total - 1].left(16), "DEUDOR0003 30,03");
  EXPECT_EQ(todas.last(), "Total: 123,45 € (7 recibos)");
}

TEST_F(ElListado, CaeEnSuSitio) {
  struct Caso {
    bool referencia;
    bool apaisado;
    double ancho;  // del papel
    double zona;
    double tabla;
  };
  for (const auto& [referencia, apaisado, ancho, zona, tabla] : std::vector<Caso>{
           {false, false, 11900, 11760, 10560},
           {true, false, 11900, 11760, 11760},
           {true, true, 16840, 16692, 11760},
       }) {
    imprimir(60, referencia, apaisado, true);
    const double izquierda = (ancho - zona) / 2;
    const double tablaEn = izquierda + (zona - tabla) / 2;
    int importes = 0;
    bool hayReferencia = false;
    for (const Palabra& p : palabras()) {
      if (p.texto == "Fecha") {
        EXPECT_NEAR(p.izquierda, izquierda + 567, 6);
      }
      if (p.texto.startsWith("DEUDOR")) {
        EXPECT_NEAR(p.izquierda, tablaEn + 30, 6);
      }
      if (p.texto == "Nombre") {
        EXPECT_NEAR((p.izquierda + p.derecha) / 2, tablaEn + 1500, 6);
      }
      if (p.texto.contains(u',') && p.texto[0].isDigit() && p.izquierda > tablaEn + 3000 &&
          p.derecha < tablaEn + 4000) {
        EXPECT_NEAR(p.derecha, tablaEn + 3960 - 30, 6) << p.texto.toStdString();
        ++importes;
      }
      if (p.texto == "Remesa") {
        EXPECT_NEAR(p.arriba, 567 + 240, 40);
      }
      hayReferencia = hayReferencia || p.texto == "R60";
    }
    EXPECT_EQ(importes, 61);
    EXPECT_EQ(hayReferencia, referencia);
  }
}

TEST_F(ElListado, SinTotalesNiAdeudosDejaLosHuecos) {
  informe = principal::PrepararInforme(visor, {}, "", true);
  EXPECT_EQ(informe.lineas.toStdString(),
            ";Emisor:\t ;Fichero:\t ;Envío:  \t ;Emisión:\t ;Cuenta:\t ;;Total:\t  €   ( recibos)");
  EXPECT_EQ(visor.ColWidth(4), 1200);

  // Un registro corto se lee como si acabara en blancos.
  remesa::ListaRegistros cortos;
  cortos.anadir("01" + std::string(113, ' ') + "202401");
  cortos.anadir("02" + std::string(43, ' ') + "20240");
  cortos.anadir("04" + std::string(60, ' ') + "1234567X");
  informe = principal::PrepararInforme(visor, cortos, "", true);
  EXPECT_EQ(informe.lineas.toStdString(),
            ";Emisor:\t ;Fichero:\t ;Envío:  \t   /01/2024;Emisión:\t   /0 /2024;Cuenta:\t ;;"
            "Total:\t  €   (1234567 recibos)");
}

class ElMotor : public ElListado {
 protected:
  /// Imprime la rejilla y devuelve las líneas que se leen.
  QStringList imprimirRejilla(const QString& subtitulo, bool ajustar, int desde, int hasta, bool conFecha,
                              const QString& bloque) {
    DocumentoPdf pdf(ARuta(pdf_), false, {});
    EXPECT_TRUE(ImprimirRejilla(pdf.trabajo(), visor, "TITULO", false, subtitulo, ajustar, desde, hasta, true,
                                conFecha, bloque));
    pdf.confirmar();
    return lineas();
  }
  Palabra palabra(const QString& texto) {
    const auto todas = palabras();
    const auto hallada =
        std::find_if(todas.begin(), todas.end(), [&](const Palabra& p) { return p.texto == texto; });
    return hallada == todas.end() ? Palabra{} : *hallada;
  }
  void llenar(int filas) {
    PrepararRejilla(visor, "A#60;B#30;C#20");
    for (int f = 1; f <= filas; ++f)
      for (int c = 0; c < 3; ++c)
        PonerCelda(visor, f, c, QString("%1%2").arg(QChar('a' + c)).arg(f));
  }
};

TEST_F(ElMotor, AtiendeASusArgumentos) {
  llenar(5);
  visor.PonerRowHeight(3, 0);
  visor.PonerRow(2);
  visor.PonerRowSel(4);
  EXPECT_EQ(imprimirRejilla("<subtitulo", true, -1, -1, true, "").join(u'|').toStdString(),
            "Fecha 24/11/2026 TITULO Página 1|subtitulo|A B|a1 b1|a2 b2|a4 b4|a5 b5");
  EXPECT_NEAR(palabra("subtitulo").izquierda, 70 + 567, 6);
  EXPECT_EQ(imprimirRejilla(">sub", true, 2, 4, false, "uno; dos\ttres;;fin").join(u'|').toStdString(),
            "TITULO Página 1|sub|A B|a2 b2|a4 b4|uno|dos tres|fin");
  EXPECT_NEAR(palabra("sub").derecha, 70 + 11760, 6);
  EXPECT_EQ(visor.Row() * 10 + visor.RowSel(), 24);
  EXPECT_TRUE(visor.Visible());
  EXPECT_EQ(imprimirRejilla("", false, 1, 1, false, "").join(u'|').toStdString(),
            "TITULO Página 1|A B|a1 b1 c1");
}

TEST_F(ElMotor, ParteLasPaginasPorSuRegla) {
  // La zona mide 15.704: tras la cabeza (567 + 240) y dejando 283,5 caben 60 filas de 240.
  struct Caso {
    int filas;
    int alta;
    QString bloque;
    int paginas;
  };
  const QString largo = QString(";linea").repeated(10);
  for (const auto& [filas, alta, bloque, esperadas] : std::vector<Caso>{
           {60, 0, "", 1},
           {61, 0, "", 2},
           {50, 0, largo, 1},
           {54, 0, largo, 2},
           {3, 20000, "", 3},
           {1, 0, QString(";linea").repeated(200), 3},
       }) {
    llenar(filas);
    if (alta > 0) visor.PonerRowHeight(2, alta);
    const QStringList leidas = imprimirRejilla("", true, -1, -1, false, bloque);
    EXPECT_EQ(paginas(), esperadas) << filas;
    EXPECT_EQ(leidas.count("linea"), bloque.count("linea"));
    EXPECT_EQ(leidas.filter(QRegularExpression("^a\\d+ b")).size(), filas);
    // Un bloque que cabe en una página no se parte.
    if (bloque == largo) {
      EXPECT_EQ(leidas.lastIndexOf("linea") - leidas.indexOf("linea"), 9);
    }
  }
}

TEST_F(ElMotor, LoLargoSeDoblaOSeEncogePeroNoSePierde) {
  PrepararRejilla(visor, "Texto#10;Importe#8>");
  PonerCelda(visor, 1, 0, "ESTE TEXTO NO CABE EN SU COLUMNA");
  PonerCelda(visor, 1, 1, "-999.999.999.999,99");
  const QString ruta1 = QString("C:\\carpeta muy larga").repeated(12);
  const QString titulo(200, u'M');
  DocumentoPdf pdf(ARuta(pdf_), false, {});
  ImprimirRejilla(pdf.trabajo(), visor, titulo, true, "", true, -1, -1, true, true, "Fichero:\t" + ruta1);
  pdf.confirmar();
  const QStringList leidas = lineas();
  EXPECT_EQ(leidas[0].toStdString(), QString("Fecha 24/11/2026 %1 Página 1").arg(titulo).toStdString());
  EXPECT_TRUE(leidas[2].startsWith("ESTE TEXTO")) << leidas[2].toStdString();
  EXPECT_TRUE(leidas[2].endsWith(" -999.999.999.999,99")) << leidas[2].toStdString();
  EXPECT_FALSE(leidas[2].contains("COLUMNA"));
  EXPECT_EQ(leidas.mid(3).join(QString()).remove(u' ').toStdString(),
            QString("Fichero:" + ruta1).remove(u' ').toStdString());
  for (const Palabra& p : palabras())
    EXPECT_LE(p.derecha, 70 + 11760 + 6) << p.texto.toStdString();

  // Una etiqueta más ancha que el papel también se dobla.
  const QStringList etiqueta =
      imprimirRejilla("", true, -1, -1, false, QString(150, u'@') + "\tvalor").mid(3);
  EXPECT_GT(etiqueta.size(), 2);
  EXPECT_TRUE(etiqueta.last().endsWith("valor")) << etiqueta.last().toStdString();
  EXPECT_EQ(etiqueta.join(QString()).count(u'@'), 150);

  // El aire de la celda cede antes que el texto.
  QString justo(20, u'A');
  while (Letra(false).Ancho(justo, kTamano) > 1200)
    justo.chop(1);
  PonerCelda(visor, 1, 0, justo);
  EXPECT_TRUE(imprimirRejilla("", true, -1, -1, false, "").at(2).startsWith(justo));
}

TEST_F(ElMotor, SinConfirmarElDestinoQuedaComoEstaba) {
  QFile anterior(pdf_);
  ASSERT_TRUE(anterior.open(QIODevice::WriteOnly) && anterior.write("anterior") == 8);
  anterior.close();
  llenar(200);
  int paginasVistas = 0;
  {
    DocumentoPdf pdf(ARuta(pdf_), false, {});
    EXPECT_FALSE(ImprimirRejilla(pdf.trabajo(), visor, "T", true, "", true, -1, -1, true, true, "",
                                 [&](int, int total, int pagina) {
                                   EXPECT_TRUE(total == 200 || total == 0);
                                   paginasVistas = pagina;
                                   return pagina <= 2;
                                 }));
  }
  EXPECT_EQ(paginasVistas, 3);
  ASSERT_TRUE(anterior.open(QIODevice::ReadOnly));
  EXPECT_EQ(anterior.readAll(), "anterior");
  EXPECT_EQ(QDir(carpeta_.path()).entryList(QDir::Files | QDir::Hidden), QStringList{"listado.pdf"});
  EXPECT_THROW(DocumentoPdf(ARuta(ruta("no/hay.pdf")), false, {}), ficheros::ErrorEjecucion);
}
