#include <algorithm>
#include <fstream>
#include <set>

#include "Devueltos.h"
#include "devoluciones/Motivos.h"
#include "remesa/Comprobacion.h"

using namespace devoluciones;
using namespace remesa;
using namespace pruebas;
using namespace std::chrono;

namespace {

// Y todos están en el manual.
TEST(Motivos, LosDelCuadernoYLosDelEsquema) {
  std::ifstream fichero(DIR_PROYECTO "/docs/manual.md");
  const std::string manual{std::istreambuf_iterator<char>(fichero), {}};
  std::set<std::string_view> deNuevo;
  for (const Motivo& motivo : Motivos()) {
    EXPECT_EQ(BuscarMotivo(motivo.codigo), &motivo);
    EXPECT_FALSE(motivo.texto.empty() || motivo.consejo.empty()) << motivo.codigo;
    EXPECT_EQ((std::string(motivo.texto) + std::string(motivo.consejo)).find(';'), std::string::npos);
    const std::string enManual =
        "| " + std::string(motivo.codigo) + " | " + std::string(motivo.texto) + " | ";
    EXPECT_NE(manual.find(enManual), std::string::npos) << enManual;
    if (motivo.intento == Intento::OtraVez) deNuevo.insert(motivo.codigo);
  }
  EXPECT_EQ(deNuevo, (std::set<std::string_view>{"AM04", "ED05", "MS03", "TM01"}));
  EXPECT_EQ(Motivos().size(), 28U);
  EXPECT_EQ(BuscarMotivo("MD07")->intento, Intento::Nunca);
  EXPECT_EQ(BuscarMotivo("MD06")->intento, Intento::ConElDeudor);
  EXPECT_EQ(BuscarMotivo("MD01")->intento, Intento::TrasArreglo);
  for (const char* ajeno : {"", "AM0", "am04", "ZZ99", "ZZ99999"})
    EXPECT_EQ(BuscarMotivo(ajeno), nullptr) << ajeno;
}

// Cada ejemplo, en sus cuatro formas: todo se halla, y lo que dice es lo de su adeudo.
TEST_F(Devueltos, LosEjemplosSonDeSusRemesas) {
  const struct {
    const char* nombre;
    std::size_t cuantas;
    std::int64_t importe;
  } casos[] = {{"gimnasio-devueltos.Q19", 7, 32260},    {"comunidad-rechazados.Q19", 3, 40550},
               {"aguas-rechazos.xml", 3, 9000},         {"academia-rechazos.xml", 2, 48525},
               {"comunidad-anotaciones.xml", 2, 15350}, {"gimnasio-anotaciones.xml", 4, 18125}};
  for (const auto& caso : casos) {
    SCOPED_TRACE(caso.nombre);
    Lote lote;
    EXPECT_EQ(lote.leer(ejemplo(std::string("devoluciones/") + caso.nombre)).cuantas, caso.cuantas);
    EXPECT_EQ(Recontar(lote).total.importe, caso.importe);
    Cotejo cotejo(lote);
    cotejo.buscarEnCarpeta(ejemplo(""));
    for (std::size_t i = 0; i < lote.size(); ++i) {
      const auto hallazgo = cotejo.hallazgo(i);
      ASSERT_EQ(hallazgo.estado, EstadoCotejo::Hallada) << i;
      const Devolucion d = lote[i];
      if (d.alcance != Alcance::Adeudo) {
        EXPECT_EQ(static_cast<std::int64_t>(hallazgo.adeudos.size()), d.adeudos);
        continue;
      }
      const std::string& debe = cotejo.presentado(hallazgo.adeudos[0]).registros[0];
      EXPECT_EQ(d.cuenta.enRegistro(), Recortar(LeerCampo(debe, kCuentaDeudor)));
      EXPECT_EQ(d.importe, ImporteDe(debe));
      if (!lote.ficheros()[0].ruta.extension().compare(".Q19")) {
        EXPECT_EQ(d.concepto.bytes(), Recortar(LeerCampo(debe, kConcepto)));
        EXPECT_EQ(d.deudor.bytes(), Recortar(LeerCampo(debe, kNombreDeudor)));
      }
      EXPECT_FALSE(cotejo.completada(i, hallazgo).nombreAcreedor.vacio());
    }
  }
}

TEST_F(Devueltos, LeeRechazosYDevoluciones) {
  const std::vector<Caso> adeudos{{"REF1", "M1", "00000001234", "AM04"}, {"", "M2", "00000000001", "ZZZZ"}};
  EXPECT_EQ(Avisos(leer(Unidos(Fichero('2', adeudos)))), "");
  EXPECT_EQ(Avisos(leer(Unidos(Fichero('1', adeudos)), "rec.Q19")), "");
  ASSERT_EQ(lote_.size(), 4U);
  EXPECT_EQ(lote_.ficheros()[0].forma, Forma::Devoluciones);
  EXPECT_EQ(lote_.ficheros()[1].forma, Forma::Rechazos);
  for (const std::size_t i : {0, 2}) {
    const Devolucion d = lote_[i];
    EXPECT_EQ(d.referencia.bytes(), "REF1");
    EXPECT_EQ(d.mandato.bytes(), "M1");
    EXPECT_EQ(d.importe, 1234);
    EXPECT_EQ(d.motivo.bytes(), "AM04");
    EXPECT_EQ(d.deudor.bytes(), "NOMBRE DE M1");
    EXPECT_EQ(d.acreedor.bytes(), kAcreedor);
    EXPECT_EQ(d.ficheroOriginal.bytes(), kOriginal);
    EXPECT_EQ(d.fechaCobro, Dia(2026y / 12 / 1));
    EXPECT_EQ(d.fechaDevolucion.has_value(), i == 0);
    EXPECT_FALSE(d.textoBanco.presente());
  }
  EXPECT_EQ(lote_[0].fechaDevolucion, Dia(2026y / 12 / 3));
  const QStringList fila = ValoresColumnas(lote_, nullptr, 0);
  ASSERT_EQ(fila.size(), TitulosColumnas().size());
  EXPECT_EQ(fila.mid(0, 7).join(u'|').toStdString(),
            "NOMBRE DE M1|12,34|ES91 2100 0418 4502 0005 1332|REF1|M1|AM04|No había saldo");
  EXPECT_EQ(TextoMotivo(lote_[1].motivo), "ZZZZ");
  EXPECT_EQ(TextoConsejo(lote_[1].motivo), "");
}

// Nada se pierde y todo se dice.
TEST_F(Devueltos, FicherosEstropeados) {
  const std::vector<Caso> dos{{"R1", "M1", "00000000100", "AM04"}, {"R2", "M2", "00000000200", "AC04"}};
  const std::vector<std::string> bueno = Fichero('2', dos);
  const auto con = [&](auto&& cambiar) {
    auto registros = bueno;  // NOLINT: con alguno de los cambios no cambia nada
    cambiar(registros);
    return Unidos(registros);
  };
  using V = std::vector<std::string>&;
  using enum ClaseAviso;
  const struct {
    const char* que;
    std::string bytes;
    std::size_t cuantas;
    std::string avisos;
  } casos[] = {
      {"con LF", Unidos(bueno, "\n"), 2, ""},
      {"en UTF-8", con([](V r) { r[2].replace(118, 1, "\xC3\x91"); }), 2, Aviso(EnUtf8, "1@3")},
      {"con algo detrás", Unidos(bueno) + "FIN\r\n", 2,
       Aviso(Longitud, "1@8") + " " + Aviso(CodigoAjeno, "1@8")},
      {"con líneas vacías", Unidos(bueno) + "\r\n   \r\n\x1A", 2, ""},
      {"cortado", con([](V r) { r.resize(4); }), 2, Aviso(Cortado, "1@4")},
      {"cortado dentro de un registro", Unidos(bueno).substr(0, 602 * 3 + 60), 2,
       Aviso(Longitud, "1@4") + " " + Aviso(Importe, "1@4") + " " + Aviso(Cortado, "1@4")},
      {"sin cabecera", con([](V r) { r.erase(r.begin() + 1); }), 2,
       Aviso(SinCabecera, "2@2") + " " + Aviso(TotalRegistros, "1@4:4!3") + " " +
           Aviso(TotalRegistros, "1@5:5!4") + " " + Aviso(TotalRegistros, "1@6:7!6")},
      {"sin uno", con([](V r) { r.erase(r.begin() + 2); }), 1,
       Aviso(TotalImportes, "1@4:300!200") + " " + Aviso(TotalAdeudos, "1@4:2!1") + " " +
           Aviso(TotalRegistros, "1@4:4!3") + " " + Aviso(TotalImportes, "1@5:300!200") + " " +
           Aviso(TotalAdeudos, "1@5:2!1") + " " + Aviso(TotalRegistros, "1@5:5!4") + " " +
           Aviso(TotalImportes, "1@6:300!200") + " " + Aviso(TotalAdeudos, "1@6:2!1") + " " +
           Aviso(TotalRegistros, "1@6:7!6")},
      {"un total sin cifras", con([](V r) { EscribirCampo(r[5], kImporte05, "x"); }), 2,
       Aviso(TotalImportes, "1@6")},
      {"mezclado y ajeno", con([](V r) { r[3][0] = '1', r.insert(r.begin() + 6, std::string(600, 'X')); }), 2,
       Aviso(Mezcla, "1@4") + " " + Aviso(CodigoAjeno, "1@7") + " " + Aviso(TotalRegistros, "1@8:7!8")},
      {"dos pegados", Unidos(bueno) + Unidos(Fichero('2', {{"R3", "M3", "00000000001", "AM04"}})), 3, ""},
      {"sin ninguna", Unidos(Fichero('2', {})), 0, Aviso(SinDevoluciones, "1@0")},
      {"la misma dos veces", Unidos(Fichero('2', {dos[0], dos[0]})), 2, Aviso(DevolucionRepetida, "1@4")},
  };
  for (const auto& caso : casos) {
    SCOPED_TRACE(caso.que);
    Lote lote;
    const FicheroLeido& fichero = lote.leer(escribir("f", caso.bytes));
    EXPECT_EQ(fichero.cuantas, caso.cuantas);
    EXPECT_EQ(Avisos(fichero), caso.avisos);
    EXPECT_EQ(fichero.completo, !caso.avisos.ends_with(Aviso(Cortado, "1@4")));
  }
}

TEST_F(Devueltos, ElMismoFicheroYElQueNoEs) {
  const std::string bytes = Unidos(Fichero('2', {{"R1", "M1", "00000000100", "AM04"}}));
  leer(bytes);
  EXPECT_EQ(Avisos(leer(bytes, "copia.Q19")), Aviso(ClaseAviso::FicheroRepetido, "1@0"));
  // El mismo adeudo en otro fichero: se ve, pero no se suma otra vez.
  leer(Unidos(Fichero('2', {{"R1", "M1", "00000000100", "AM04"}, {"R2", "M2", "00000000001", "AM04"}})),
       "otro");
  EXPECT_EQ(lote_.size(), 3U);
  EXPECT_EQ(Recontar(lote_).total.adeudos, 2);
  EXPECT_EQ(Recontar(lote_).porMotivo[0].cuenta.importe, 101);
  const std::pair<const char*, const char*> ajenos[] = {
      {"0119143001", "es una remesa de adeudos, no un fichero de devoluciones"},
      {"", "no es un fichero de devoluciones"},
      {"<Document><CstmrDrctDbtInitn/></Document>",
       "es una remesa de adeudos en XML (pain.008), no un fichero de devoluciones"},
      {"<Facturae/>", "no es un fichero de devoluciones, sino factura electrónica"}};
  for (const auto& [contenido, queEs] : ajenos) {
    try {
      leer(contenido, "ajeno");
      FAIL() << contenido;
    } catch (const FicheroAjeno& ajeno) {
      EXPECT_EQ(ajeno.porque.toStdString(), queEs);
    }
  }
  EXPECT_EQ(pruebas::NumeroError([&] { leer("<Document", "roto"); }), ficheros::kFormatoNoValido);
  EXPECT_EQ(pruebas::NumeroError([&] { lote_.leer(carpeta_ / "falta"); }), ficheros::kNoEncontrado);
  EXPECT_EQ(lote_.ficheros().size(), 3U);
}

}  // namespace
