#include <gtest/gtest.h>

#include <QLocale>
#include <tuple>

#include "comunes/plataforma/Aviso.h"
#include "comunes/plataforma/Escala.h"
#include "comunes/rejilla/Importe.h"
#include "comunes/rejilla/MiVisor.h"
#include "comunes/rejilla/ModeloRejilla.h"
#include "comunes/rejilla/Orden.h"
#include "comunes/rejilla/Subtotales.h"
#include "ficheros/ErrorEjecucion.h"
#include "pruebas/EnEspana.h"

using namespace comunes;

namespace {

using namespace Qt::StringLiterals;

/// Una rejilla de columnas "Grupo;Importe;Otra" con una fila por texto "a|b|c"; delante de "~", fila oculta.
void llenar(Rejilla& rejilla, const QStringList& filas) {
  PrepararRejilla(rejilla, u"Grupo#10;Importe#8>;Otra#5"_s);
  for (int f = 0; f < filas.size(); ++f) {
    const QStringList celdas = QString(filas[f]).remove(u'~').split(u'|');
    for (int c = 0; c < celdas.size(); ++c)
      PonerCelda(rejilla, f + 1, c, celdas[c]);
    if (filas[f].startsWith(u'~')) rejilla.PonerRowHeight(f + 1, 0);
  }
}

QStringList columna(const Rejilla& rejilla, int c) {
  QStringList textos;
  for (int f = 1; f < rejilla.Rows(); ++f)
    textos << rejilla.TextMatrix(f, c);
  return textos;
}

/// Las filas como "a|b|c", las insertadas con "+" delante.
QStringList volcar(const Rejilla& rejilla) {
  QStringList textos;
  for (int f = 1; f < rejilla.Rows(); ++f) {
    QStringList celdas;
    for (int c = 0; c < rejilla.Cols(); ++c)
      celdas << rejilla.TextMatrix(f, c);
    textos << (rejilla.RowData(f) > 0 ? u"+"_s : QString()) + celdas.join(u'|');
  }
  return textos;
}

std::string junto(const QStringList& textos) {
  return textos.join(u'\n').toStdString();
}

class LaRejilla : public testing::Test {
 protected:
  void SetUp() override {
    anterior_ = PonerAvisador([this](GradoAviso grado, const QString& texto, const QString& titulo) {
      if (grado == GradoAviso::Critico) avisos_ << texto + u'/' + titulo;
    });
  }
  void TearDown() override { PonerAvisador(anterior_); }
  pruebas::EnEspana espana_;
  Rejilla rejilla{u"VisorPrt"_s};
  QStringList avisos_;
  Avisador anterior_;
};

}  // namespace

TEST_F(LaRejilla, SePreparaConLaEspecificacion) {
  // Título/ancho/alineación del título/alineación de cada columna.
  const std::pair<QString, QString> casos[] = {
      {"Nombre#25;Importe#8>;IBAN#25=;Concepto#30;Referencia#10<",
       "Nombre/3000/4/1 Importe/960/4/7 IBAN/3000/4/4 Concepto/3600/4/1 Referencia/1200/4/1"},
      {"#0;Nombre#34;Teléfono#18;", "/0/4/1 Nombre/4080/4/1 Teléfono/2160/4/1"},
      {"", "/0/4/1"},
      {"?;Importe", "?/0/4/1 Importe/840/4/1"},
      {"<A|>B#2|C>", "A/120/1/1 B/240/7/1 C/120/4/7"},
      {"A|B;C", "A|B/360/4/1 C/120/4/1"},
      {">", "/0/7/1"},
      {"A#2.5=", "A/300/4/4"}};
  for (const auto& [especificacion, columnas] : casos) {
    rejilla.PonerRows(9);
    rejilla.PonerTextMatrix(1, 0, u"resto"_s);
    rejilla.PonerRowData(1, 1);
    rejilla.PonerRowHeight(1, 0);
    PrepararRejilla(rejilla, especificacion);
    QStringList obtenido;
    for (int c = 0; c < rejilla.Cols(); ++c) {
      EXPECT_EQ(rejilla.ColWidth(c), rejilla.ColData(c));
      const QString medidas = u"%1/%2/%3"_s.arg(rejilla.ColWidth(c));
      obtenido << rejilla.TextMatrix(0, c) + u'/' +
                      medidas.arg(rejilla.FixedAlignment(c)).arg(rejilla.ColAlignment(c));
    }
    EXPECT_EQ(obtenido.join(u' ').toStdString(), columnas.toStdString()) << especificacion.toStdString();
    EXPECT_EQ(rejilla.Rows(), 2);
    EXPECT_EQ(rejilla.RowHeight(1), kAltoFila);
    EXPECT_EQ(volcar(rejilla).join(u' ').remove(u'|'), QString());
    EXPECT_TRUE(rejilla.Redraw());
  }
  EscalaHorizontal = 1.5F;
  PrepararRejilla(rejilla, u"A#10"_s);
  EXPECT_EQ(rejilla.ColWidth(0), 1800);
  EscalaSuspendida = true;
  PrepararRejilla(rejilla, u"A#10"_s);
  EXPECT_EQ(rejilla.ColWidth(0), 1200);
  EscalaSuspendida = false;
  EscalaHorizontal = 1.0F;
}

TEST_F(LaRejilla, LeeYEscribeImportesAlCentimo) {
  const QString casos =
      "1.234,50=12345000|1234.50=12345000|1234,50=12345000|12,5=125000|1.234=12340000|0.125=1300|12.5=125000|"
      "-1.234,56=-12345600| 7 =70000|1.234.567,89=12345678900|2,005=20100|-2,005=-20100|1.234,50 €=12345000|"
      "12 recibos=120000|=0|IBAN=0|,5=5000|-=0|1.23.4=12300|0,004=0|92.233.720.368.547,75=922337203685477500";
  for (const QString& caso : casos.split(u'|'))
    EXPECT_EQ(LeerImporte(caso.section(u'=', 0, 0)), caso.section(u'=', 1).toLongLong())
        << caso.toStdString();
  EXPECT_THROW(LeerImporte("99999999999999999999"), ficheros::ErrorEjecucion);
  EXPECT_THROW(Sumar(INT64_MAX, 1), ficheros::ErrorEjecucion);

  const std::tuple<Diezmilesimas, bool, const char*, const char*> formatos[] = {
      {12345000, false, "#,##0.00", "1.234,50"},
      {0, false, "#,##0.00", ""},
      {0, true, "#,##0.00", "0,00"},
      {-100, false, "#,##0.00", "-0,01"},
      {INT64_MIN, false, "#,##0.00", "-922.337.203.685.477,58"},
      {12345678, false, "0.0000 €", "1234,5678 €"},
      {5000, false, "#.##", ",5"},
      {12345000, false, "000000", "001235"}};
  for (const auto& [valor, ceros, formato, texto] : formatos)
    EXPECT_EQ(FormatoCelda(valor, ceros, formato).toStdString(), texto) << formato;
  PonerLocaleUsuario(QLocale(QLocale::English, QLocale::UnitedKingdom));
  EXPECT_EQ(LeerImporte("1,234.50"), 12345000);
  EXPECT_EQ(LeerImporte("12,5"), 125000);
  EXPECT_EQ(FormatoCelda(u"1234567.8"_s), u"1,234,567.80"_s);
}

TEST_F(LaRejilla, AcumulaYSumaSinPerderCentimos) {
  PrepararRejilla(rejilla, u"A;B"_s);
  for (int i = 0; i < 1000; ++i)
    PonerCelda(rejilla, 3, 4, i % 2 == 0 ? "0,10" : "0.20", true);
  EXPECT_EQ(rejilla.TextMatrix(3, 4), u"150,00"_s);
  EXPECT_EQ(rejilla.Rows(), 4);
  EXPECT_EQ(rejilla.Cols(), 5);
  PonerCelda(rejilla, 3, 4, "-150", true);
  EXPECT_EQ(rejilla.TextMatrix(3, 4), QString());

  llenar(rejilla, {"a|1.234,50|x", "b|12,5|y", "~c|1000|x", "a|1234.50|x", "a|nada|x"});
  rejilla.PonerRowData(2, 1);
  EXPECT_EQ(SumarColumna(rejilla, 1, 1, 5), u"2.469,00"_s);
  EXPECT_EQ(SumarColumna(rejilla, 1, 1, 5, 2, "x"), u"2.469,00"_s);
  EXPECT_EQ(SumarColumna(rejilla, 1, 1, 5, 2, "y"), QString());
  EXPECT_EQ(SumarColumna(rejilla, 1, 1, 5, 2, "y", true), u"0,00"_s);
}

TEST_F(LaRejilla, BuscaPorTitulo) {
  PrepararRejilla(rejilla, u"Nombre;Importe;Importe"_s);
  EXPECT_EQ(BuscarColumna(rejilla, "Importe"), 1);
  EXPECT_EQ(BuscarColumna(rejilla, "#2"), 2);
  EXPECT_EQ(BuscarColumna(rejilla, "importe", true), -1);
  EXPECT_TRUE(avisos_.isEmpty());
  EXPECT_EQ(BuscarColumna(rejilla, "importe"), 0);
  EXPECT_EQ(junto(avisos_), "No encontrado ninguna columna con el título [importe]/Búsqueda en [VisorPrt]");
}

TEST_F(LaRejilla, OrdenaSegunElTipo) {
  const std::tuple<const char*, const char*, const char*> casos[] = {
      {"F", "05 mar 2026|pronto|5/3/25|31/12/1999", "|31/12/1999|05/03/2025|05/03/2026"},
      {"I", "1.234,50||9,5|-3|nada|10", "-3,00|||9,50|10,00|1.234,50"},
      {"#", "9|10||1.000|b", "b|1.000|10|9|"},
      {"", "Zapata|ñandú|abeja|Nube|Ábaco|10|9", "10|9|Ábaco|abeja|Nube|ñandú|Zapata"}};
  for (const auto& [tag, antes, despues] : casos) {
    rejilla.PonerTag(tag);
    llenar(rejilla, QString(antes).split(u'|'));
    rejilla.PonerCol(1);
    OrdenarColumna(rejilla, 0, true);
    EXPECT_EQ(columna(rejilla, 0).join(u'|').toStdString(), despues) << tag;
    EXPECT_EQ(rejilla.Col(), 1);
    EXPECT_EQ(rejilla.Estilo(0, 0).ForeColor, 255);
    EXPECT_EQ(rejilla.Estilo(0, 1).ForeColor, 0);
  }
  // Las iguales conservan su orden y cada fila se mueve entera, con sus datos.
  llenar(rejilla, {"b|1", "A|2", "a|3", "~B|4"});
  rejilla.PonerCol(0);
  OrdenarColumna(rejilla, -1, false, 2);
  EXPECT_EQ(columna(rejilla, 1).join(u' '), u"2 3 1 4"_s);
  EXPECT_EQ(rejilla.RowHeight(4), 0);
  EXPECT_EQ(rejilla.Col(), 2);
  EXPECT_TRUE(rejilla.Redraw() && rejilla.Visible());
}

// Muchas filas se ordenan por partes: lo igual sigue en su orden aunque caiga en una sola.
TEST_F(LaRejilla, OrdenaMuchasSinMoverLoIgual) {
  constexpr int kFilas = 30000;
  for (const int distintas : {1, 7, 20000}) {
    PrepararRejilla(rejilla, u"Clave#5;Orden#5"_s);
    rejilla.PonerRows(kFilas + 1);
    for (int f = 1; f <= kFilas; ++f) {
      rejilla.PonerTextMatrix(f, 0, u"%1"_s.arg(f * 7919LL % distintas, 5, 10, QChar(u'0')));
      rejilla.PonerTextMatrix(f, 1, QString::number(f));
    }
    OrdenarColumna(rejilla, 0);
    int desordenadas = 0;
    for (int f = 2; f <= kFilas; ++f) {
      const auto clave = [&](int fila) {
        return std::pair(rejilla.TextMatrix(fila, 0).toInt(), rejilla.TextMatrix(fila, 1).toInt());
      };
      desordenadas += clave(f) < clave(f - 1) ? 1 : 0;
    }
    EXPECT_EQ(desordenadas, 0) << distintas;
  }
}

TEST_F(LaRejilla, InsertaSubtotales) {
  // Columna del grupo, tipo, opción, filas y resultado.
  const char* const casos[] = {
      // sin grupo
      "@@NOSORT@b|1.000,10 ~a|5 a|2@b|1.000,10|\na|5|\na|2|\n+|1.002,10|Suma ?",
      // por texto
      "Grupo@@@b|1 a|2 b|3,5@a|2|\n+|2,00|Suma a\n+||\nb|1|\nb|3,5|\n+|4,50|Suma b\n+||\n+|6,50|Total "
      "general",
      // sin ordenar, con un grupo dos veces y una fila oculta
      "Grupo@@NOSORT@b|1 ~c|7 a|2 b|3@b|1|\nc|7|\n+|1,00|Suma b\n+||\na|2|\n+|2,00|Suma a\n+||\nb|3|\n"
      "+|3,00|Suma b\n+||\n+|6,00|Total general",
      // por meses
      "Grupo@@mmm yyyy@05/03/2026|1 01/02/2026|2 31/03/2026|4@feb 2026|2|\n+|2,00|Suma feb 2026\n+||\n"
      "mar 2026|1|\nmar 2026|4|\n+|5,00|Suma mar 2026\n+||\n+|7,00|Total general",
      // por su tipo
      "Grupo@I@@10|1 9|2@9,00|2|\n+|2,00|Suma 9,00\n+||\n10,00|1|\n+|1,00|Suma 10,00\n+||\n+|3,00|Total "
      "general"};
  for (const char* caso : casos) {
    const QStringList c = QString(caso).split(u'@');
    rejilla.PonerTag(c[1]);
    llenar(rejilla, c[3].split(u' '));
    rejilla.PonerVisible(true);
    for (const int vez : {1, 2}) {
      Subtotales(c[0], rejilla, "Suma ?", "Otra", c[2], {"Importe"});
      EXPECT_EQ(junto(volcar(rejilla)), c[4].toStdString()) << caso << ", vez " << vez;
    }
    const int total = rejilla.Rows() - 1;
    EXPECT_EQ(rejilla.Estilo(total, 1).BackColor, 12632256);
    EXPECT_EQ(rejilla.Estilo(total, 1).Alineacion, kDerecha);
    EXPECT_TRUE(rejilla.Redraw() && rejilla.Visible());
  }
  EXPECT_TRUE(avisos_.isEmpty());
}

TEST_F(LaRejilla, OcultaYEnsenaColumnas) {
  PrepararRejilla(rejilla, u"Nombre#25;Importe#8>;Referencia#10<"_s);
  OcultarColumnas(rejilla, false, {"Referencia", "Importe"});
  EXPECT_EQ(rejilla.ColWidth(1) + rejilla.ColWidth(2), 0);
  EXPECT_EQ(rejilla.Estilo(0, 2).ForeColor, rejilla.BackColor());
  OcultarColumnas(rejilla, true, {"Referencia"});
  EXPECT_EQ(rejilla.ColWidth(1), 960);
  EXPECT_EQ(rejilla.ColWidth(2), 0);
  OcultarColumnas(rejilla, true, {});
  EXPECT_EQ(rejilla.ColWidth(2), 1200);
  EXPECT_EQ(rejilla.Estilo(0, 2).ForeColor, 0);
  EXPECT_EQ(rejilla.Row(), 0);
}

TEST_F(LaRejilla, EscribeConEstiloYCreceDondeHaceFalta) {
  EscribirCelda(rejilla, 4, 3, "uno", 255, -1, "C", 1);
  EscribirCelda(rejilla, 4, 3, "", -1, 12632256, "X", -1);
  EXPECT_EQ(rejilla.TextMatrix(4, 3), u"uno"_s);
  const EstiloCelda estilo = rejilla.Estilo(4, 3);
  EXPECT_EQ(std::tie(estilo.ForeColor, estilo.BackColor, estilo.Alineacion),
            std::make_tuple(255, 12632256, int{kCentro}));
  EXPECT_TRUE(estilo.Negrita);
  EXPECT_EQ(rejilla.Row() * 10 + rejilla.Col(), 43);
  rejilla.PonerRows(2);
  EXPECT_EQ(rejilla.Row(), 1);
  EXPECT_THROW(rejilla.TextMatrix(2, 0), ficheros::ErrorEjecucion);
  EXPECT_THROW(QuitarFila(rejilla, 0), ficheros::ErrorEjecucion);
}

TEST_F(LaRejilla, ElModeloSigueALaRejilla) {
  ModeloRejilla modelo(rejilla);
  int reposiciones = 0;
  QObject::connect(&modelo, &QAbstractItemModel::modelReset, [&] { ++reposiciones; });
  {
    const SinRedibujo sinRedibujo(rejilla);
    llenar(rejilla, {"a|1", "~b|2"});
    EXPECT_EQ(reposiciones, 0);
  }
  Subtotales("", rejilla, "Total", "Grupo", "NOSORT", {"Importe"});
  EXPECT_EQ(reposiciones, 2);
  EXPECT_EQ(modelo.rowCount(), 3);
  EXPECT_EQ(modelo.headerData(1, Qt::Horizontal, Qt::DisplayRole), u"Importe"_s);
  EXPECT_EQ(modelo.data(modelo.index(0, 1), Qt::TextAlignmentRole).toInt(),
            Qt::AlignRight | Qt::AlignVCenter);
  EXPECT_TRUE(modelo.FilaOculta(1));
}
