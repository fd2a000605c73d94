#include <algorithm>
#include <set>

#include "Carpeta.h"
#include "Registros.h"
#include "comunes/plataforma/Formatos.h"
#include "devoluciones/Textos.h"
#include "iso20022/Exportacion.h"
#include "remesa/Comprobacion.h"
#include "remesa/TotalesNorma.h"

using namespace devoluciones;
using namespace remesa;
using namespace std::chrono;

namespace {

constexpr const char* kOriginal = "PRE2026112412003000000ACUARIO000000";
constexpr const char* kAcreedor = "ES33000B99654105";

struct Caso {
  std::string referencia, mandato, importe, motivo;
};

/// Una remesa, o las devoluciones o los rechazos de sus adeudos ('0', '2', '1'), con sus totales.
std::vector<std::string> Fichero(char cifra, const std::vector<Caso>& adeudos,
                                 std::string_view fecha = "20261201", std::string_view original = kOriginal,
                                 std::string_view acreedor = kAcreedor) {
  const auto codigo = [&](char segunda) { return std::string{cifra, segunda} + "1914300"; };
  std::vector<std::string> registros{
      pruebas::Registro(codigo('1') + "1",
                        {{kIdentificadorPresentador, acreedor},
                         {kNombrePresentador, "GIMNASIO ACUARIO"},
                         {kFechaCreacion, "20261124"},
                         {kIdentificacionFichero, cifra == '0' ? original : "DEV-DEL-BANCO"}}),
      pruebas::Registro(codigo('2') + "2", {{kIdentificadorAcreedor, acreedor},
                                            {kFechaCobro, cifra == '2' ? "20261203" : fecha},
                                            {kNombreAcreedor, "GIMNASIO ACUARIO"},
                                            {kCuentaAcreedor, "ES9121000418450200051332"},
                                            {kFicheroOriginal, cifra == '0' ? "" : original}})};
  for (const Caso& a : adeudos)
    registros.push_back(
        pruebas::Registro(codigo('3') + "3", {{kReferenciaAdeudo, a.referencia},
                                              {kReferenciaMandato, a.mandato},
                                              {kTipoAdeudo, "RCUR"},
                                              {kImporteAdeudo, a.importe},
                                              {kFechaFirma, "20200101"},
                                              {kNombreDeudor, "NOMBRE DE " + a.mandato},
                                              {kClaseCuenta, "A"},
                                              {kCuentaDeudor, "ES9121000418450200051332"},
                                              {kConcepto, "CUOTA"},
                                              {kMotivo, cifra == '0' ? "" : a.motivo},
                                              {kFechaCobroOriginal, cifra == '2' ? fecha : ""}}));
  for (const char segunda : {'4', '5'})
    registros.push_back(pruebas::Registro(
        std::string{cifra, segunda},
        {{segunda == '4' ? kAcreedor04 : kAcreedor05, acreedor},
         {segunda == '4' ? kFecha04 : Posiciones{600, 600}, segunda == '4' ? fecha : " "}}));
  registros.push_back(pruebas::Registro("99"));
  TotalesNorma totales;
  constexpr ClaseRegistro kClases[] = {ClaseRegistro::Presentador, ClaseRegistro::Acreedor,
                                       ClaseRegistro::Adeudo, ClaseRegistro::TotalesFecha,
                                       ClaseRegistro::TotalesAcreedor};
  for (std::string& registro : registros) {
    const ClaseRegistro clase =
        registro[0] == '9' ? ClaseRegistro::TotalesGenerales : kClases[registro[1] - '1'];
    for (const TotalDebido& total : totales.dar(registro, clase))
      EscribirCampo(registro, total.donde, CifrasDe(total.valor, total.donde.longitud()));
  }
  return registros;
}

std::string Unidos(const std::vector<std::string>& registros, std::string_view fin = "\r\n") {
  std::string bytes;
  for (const std::string& registro : registros)
    bytes.append(registro).append(fin);
  return bytes;
}

class Devueltos : public pruebas::Carpeta {
 protected:
  Devueltos() { comunes::PonerLocaleUsuario(QLocale(QLocale::Spanish, QLocale::Spain)); }
  ~Devueltos() override { comunes::PonerLocaleUsuario({}); }

  const FicheroLeido& leer(const std::string& bytes, const std::string& nombre = "dev.Q19") {
    return lote_.leer(escribir(nombre, bytes));
  }
  static std::filesystem::path ejemplo(const std::string& nombre) {
    return std::filesystem::path(DIR_EJEMPLOS) / nombre;
  }
  Lote lote_;
};

/// "clase×cuenta@registro dicho≠debido" de cada aviso, que además se explica.
std::string Avisos(const FicheroLeido& fichero) {
  std::string texto;
  for (const AvisoLectura& aviso : fichero.avisos) {
    EXPECT_FALSE(TextoAviso(aviso, fichero.forma).contains(u'%'))
        << TextoAviso(aviso, fichero.forma).toStdString();
    EXPECT_FALSE(TextoAviso(aviso, fichero.forma).contains(u';'));
    texto += (texto.empty() ? "" : " ") + std::to_string(static_cast<int>(aviso.clase)) + "x" +
             std::to_string(aviso.cuenta) + "@" + std::to_string(aviso.registro);
    if (aviso.dicho) texto += ":" + std::to_string(*aviso.dicho) + "!" + std::to_string(aviso.debido);
  }
  return texto;
}

std::string Aviso(ClaseAviso clase, const std::string& resto) {
  return std::to_string(static_cast<int>(clase)) + "x" + resto;
}

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

/// Lo leído, una línea por devolución: alcance, referencia, mandato, céntimos, motivo, fechas, fichero y
/// bloque.
std::string Leido(const Lote& lote) {
  std::string texto;
  const auto parte = [&](const Dato& dato) {
    texto += "|" + (dato.presente() ? std::string(dato.bytes()) : std::string("-"));
  };
  for (std::size_t i = 0; i < lote.size(); ++i) {
    const Devolucion d = lote[i];
    texto += (i == 0 ? "" : "\n") + std::string(1, "ABM"[static_cast<int>(d.alcance)]);
    parte(d.referencia);
    parte(d.mandato);
    texto += "|" + (d.importe ? std::to_string(*d.importe) : "-");
    for (const Dato* dato : {&d.motivo, &d.textoBanco})
      parte(*dato);
    texto += "|" + TextoDia(d.fechaCobro).toStdString() + "|" + TextoDia(d.fechaDevolucion).toStdString();
    parte(d.ficheroOriginal);
    parte(d.bloqueOriginal);
    if (d.adeudos) texto += "|" + std::to_string(*d.adeudos);
  }
  return texto;
}

std::string Xml(const char* mensaje, const std::string& cuerpo) {
  return "<?xml version='1.0'?><n:Document xmlns:n='x'><n:" + std::string(mensaje) + ">" + cuerpo +
         "</n:" + mensaje + "></n:Document>";
}

TEST_F(Devueltos, LeePain002) {
  const auto mensaje = [](const std::string& id, const std::string& grupo, const std::string& bloques) {
    return Xml("CstmrPmtStsRpt", "<GrpHdr><MsgId>" + id +
                                     "</MsgId></GrpHdr><OrgnlGrpInfAndSts><OrgnlMsgId>2026-12-04X"
                                     "</OrgnlMsgId>" +
                                     grupo + "</OrgnlGrpInfAndSts>" + bloques);
  };
  const auto bloque = [](const std::string& dentro) {
    return "<OrgnlPmtInfAndSts><OrgnlPmtInfId>P-1</OrgnlPmtInfId>" + dentro + "</OrgnlPmtInfAndSts>";
  };
  const auto motivo = [](const std::string& codigo) {
    return "<StsRsnInf><Rsn>" + codigo + "</Rsn></StsRsnInf>";
  };
  const std::string am04 = motivo("<Cd>AM04</Cd>");
  const auto operacion = [](const std::string& dicho, const std::string& mas = {}) {
    return "<TxInfAndSts><OrgnlEndToEndId>R1</OrgnlEndToEndId>" + dicho + "<OrgnlTxRef>" + mas +
           "</OrgnlTxRef></TxInfAndSts>";
  };
  const std::string datos =
      "<Amt><InstdAmt Ccy='EUR'>12.3</InstdAmt></Amt><ReqdColltnDt>2026-12-01</ReqdColltnDt>";
  using enum ClaseAviso;
  const struct {
    std::string xml;
    const char* leido;
    std::string avisos;
  } casos[] = {
      // Una operación, con los elementos de la versión 03 y con los que luego la envuelven.
      {mensaje("X", "",
               bloque(operacion("<TxSts>RJCT</TxSts>" + am04,
                                datos + "<MndtRltdInf><MndtId>M1</MndtId></MndtRltdInf>"))),
       "A|R1|M1|1230|AM04|-|01/12/2026||2026-12-04X|P-1", ""},
      {mensaje(
           "X", "",
           bloque(operacion("<TxSts>RJCT</TxSts>" + am04,
                            "<MndtRltdInf><DrctDbtMndt><MndtId>M1</MndtId></DrctDbtMndt></MndtRltdInf>"))),
       "A|R1|M1|-|AM04|-|||2026-12-04X|P-1", ""},
      // Devoluciones: el mensaje que nombran es del banco y empieza por la fecha.
      {mensaje("DA1", "", bloque(operacion("<TxSts>RJCT</TxSts>" + am04))),
       "A|R1|-|-|AM04|-||04/12/2026|-|P-1", ""},
      {mensaje(
           "X", "",
           bloque("<TxInfAndSts><OrgnlEndToEndId>NOTPROVIDED</OrgnlEndToEndId><TxSts>RJCT</TxSts>" +
                  motivo("<Prtry>Q&amp;7</Prtry>") +
                  "<StsRsnInf><AddtlInf>Uno</AddtlInf><AddtlInf>dos</AddtlInf></StsRsnInf></TxInfAndSts>")),
       "A||-|-|Q&7|Uno dos|||2026-12-04X|P-1", ""},
      // El bloque y el grupo dicen lo que no dice la operación.
      {mensaje("X", "<GrpSts>RJCT</GrpSts>" + am04, bloque(operacion(""))),
       "A|R1|-|-|AM04|-|||2026-12-04X|P-1", ""},
      {mensaje("X", "", bloque("<PmtInfSts>RJCT</PmtInfSts>" + motivo("<Cd>TM01</Cd>") + operacion(am04))),
       "A|R1|-|-|AM04|-|||2026-12-04X|P-1", ""},
      {mensaje("X", "", bloque(operacion("<TxSts>ACSC</TxSts>") + operacion(motivo("<Cd>0000</Cd>")))), "",
       Aviso(NoRechazados, "2@1")},
      // Enteros.
      {mensaje("X", "",
               bloque("<OrgnlNbOfTxs>8</OrgnlNbOfTxs><OrgnlCtrlSum>433.25</OrgnlCtrlSum><PmtInfSts>RJCT</"
                      "PmtInfSts>" +
                      am04)),
       "B|-|-|43325|AM04|-|||2026-12-04X|P-1|8", ""},
      {mensaje("X", "",
               bloque("<OrgnlNbOfTxs>3</OrgnlNbOfTxs><PmtInfSts>RJCT</PmtInfSts>" + am04 + operacion(""))),
       "A|R1|-|-|AM04|-|||2026-12-04X|P-1\nB|-|-|-|AM04|-|||2026-12-04X|P-1|2", ""},
      {mensaje("X", "<OrgnlNbOfTxs>5</OrgnlNbOfTxs><GrpSts>RJCT</GrpSts>" + motivo("<Cd>FF01</Cd>"), ""),
       "M|-|-|-|FF01|-|||2026-12-04X|-|5", ""},
      {mensaje("X", "<OrgnlMsgNmId>pain.001.001.03</OrgnlMsgNmId>", bloque(operacion("<TxSts>RJCT</TxSts>"))),
       "", Aviso(DeTransferencias, "1@1")},
      // Lo que dice el mensaje frente a lo que trae.
      {mensaje("X", "<NbOfTxsPerSts><DtldNbOfTxs>4</DtldNbOfTxs><DtldSts>RJCT</DtldSts></NbOfTxsPerSts>",
               bloque(operacion("<TxSts>RJCT</TxSts>"))),
       "A|R1|-|-|-|-|||2026-12-04X|P-1", Aviso(TotalAdeudos, "1@0:4!1")},
      {mensaje("X", "",
               bloque(operacion("<TxSts>RJCT</TxSts>", "<Amt><InstdAmt Ccy='USD'>1.00</InstdAmt></Amt>"))),
       "A|R1|-|-|-|-|||2026-12-04X|P-1", Aviso(Moneda, "1@1")},
      {mensaje("X", "",
               bloque(operacion("<TxSts>RJCT</TxSts>", "<Amt><InstdAmt Ccy='EUR'>1.005</InstdAmt></Amt>"))),
       "A|R1|-|-|-|-|||2026-12-04X|P-1", Aviso(Importe, "1@1")},
  };
  for (const auto& caso : casos) {
    SCOPED_TRACE(caso.xml);
    Lote lote;
    const FicheroLeido& fichero = lote.leer(escribir("f.xml", caso.xml));
    EXPECT_EQ(Leido(lote), caso.leido);
    EXPECT_EQ(Avisos(fichero),
              caso.avisos.empty() && lote.size() == 0 ? Aviso(SinDevoluciones, "1@0") : caso.avisos);
  }
  // Cortado: lo que venía antes se enseña y el fichero no se da por leído.
  Lote lote;
  const std::string entero =
      mensaje("X", "", bloque(operacion("<TxSts>RJCT</TxSts>") + operacion("<TxSts>RJCT</TxSts>")));
  EXPECT_FALSE(lote.leer(escribir("f.xml", entero.substr(0, entero.rfind("<TxInfAndSts>") + 40))).completo);
  EXPECT_EQ(lote.size(), 1U);
}

TEST_F(Devueltos, LeeCamt054) {
  const auto mensaje = [](const std::string& dentro, const std::string& resumen = {}) {
    return Xml("BkToCstmrDbtCdtNtfctn",
               "<GrpHdr><MsgId>A1</MsgId></GrpHdr><Ntfctn><Acct><Id><IBAN>ES11</IBAN></Id></Acct>" + resumen +
                   dentro + "</Ntfctn>");
  };
  const auto anotacion = [](const std::string& importe, const std::string& detalles,
                            const char* signo = "DBIT") {
    return "<Ntry><Amt Ccy='EUR'>" + importe + "</Amt><CdtDbtInd>" + signo +
           "</CdtDbtInd><BookgDt><DtTm>2026-12-04T10:00:00</DtTm></BookgDt><NtryDtls>" + detalles +
           "</NtryDtls></Ntry>";
  };
  const auto detalle = [](const std::string& mas,
                          const std::string& devuelta = "<RtrInf><Rsn><Cd>MD06</Cd></Rsn></RtrInf>") {
    return "<TxDtls><Refs><EndToEndId>R1</EndToEndId><MndtId>M1</MndtId></Refs>" + mas + devuelta +
           "</TxDtls>";
  };
  const std::string amt = "<Amt Ccy='EUR'>5.00</Amt>",
                    txAmt = "<AmtDtls><TxAmt>" + amt + "</TxAmt></AmtDtls>";
  using enum ClaseAviso;
  const struct {
    std::string xml;
    const char* leido;
    std::string avisos;
  } casos[] = {
      {mensaje(anotacion("5", detalle(amt))), "A|R1|M1|500|MD06|-||04/12/2026|-|-", ""},
      {mensaje(anotacion("5", detalle(txAmt))), "A|R1|M1|500|MD06|-||04/12/2026|-|-", ""},
      {mensaje(anotacion("5", detalle(""))), "A|R1|M1|500|MD06|-||04/12/2026|-|-", ""},
      {mensaje(anotacion(
           "5", detalle(amt, "<RtrInf><Rsn><Prtry>NARR</Prtry></Rsn><AddtlInf>No pagó</AddtlInf></RtrInf>"))),
       "A|R1|M1|500|NARR|No pagó||04/12/2026|-|-", ""},
      {mensaje(anotacion("5", detalle(amt, "<RtrInf/>"))), "A|R1|M1|500|-|-||04/12/2026|-|-", ""},
      {mensaje(anotacion("5", detalle(amt, "")) + "<Ntry><Amt Ccy='EUR'>1</Amt></Ntry>"), "",
       Aviso(SinMotivo, "2@1")},
      {mensaje(anotacion("5", detalle(amt), "CRDT")), "", Aviso(AFavor, "1@1")},
      {mensaje(anotacion("11", detalle(amt) + detalle(amt))),
       "A|R1|M1|500|MD06|-||04/12/2026|-|-\nA|R1|M1|500|MD06|-||04/12/2026|-|-",
       Aviso(TotalImportes, "1@1:1100!1000") + " " + Aviso(DevolucionRepetida, "1@1")},
      {mensaje(
           anotacion("5", "<Btch><NbOfTxs>3</NbOfTxs></Btch>" + detalle(amt)),
           "<TxsSummry><TtlDbtNtries><NbOfNtries>1</NbOfNtries><Sum>7.00</Sum></TtlDbtNtries></TxsSummry>"),
       "A|R1|M1|500|MD06|-||04/12/2026|-|-",
       Aviso(TotalAdeudos, "1@1:3!1") + " " + Aviso(TotalImportes, "1@1:700!500")},
  };
  for (const auto& caso : casos) {
    SCOPED_TRACE(caso.xml);
    Lote lote;
    const FicheroLeido& fichero = lote.leer(escribir("f.xml", caso.xml));
    EXPECT_EQ(Leido(lote), caso.leido);
    EXPECT_EQ(Avisos(fichero), caso.avisos);
    for (std::size_t i = 0; i < lote.size(); ++i)
      EXPECT_EQ(lote[i].cuentaAcreedor.bytes(), "ES11");
  }
}

class Siguiente : public Devueltos {
 protected:
  /// Escribe la remesa y la busca.
  void presentar(const std::string& nombre, const std::vector<std::string>& registros) {
    presentadas_.push_back(escribir(nombre, Unidos(registros)));
  }
  Cotejo cotejar() {
    Cotejo cotejo(lote_);
    for (const auto& ruta : presentadas_)
      cotejo.buscarEn(ruta);
    return cotejo;
  }
  std::vector<std::filesystem::path> presentadas_;
};

TEST_F(Siguiente, BuscaCadaDevolucionEnSuRemesa) {
  const Caso r1{"R1", "M1", "00000000100", "AM04"};
  const std::string otra = "PRE2026122412003000000ACUARIO000000";
  using R = std::vector<std::string>;
  const R noviembre = Fichero('0', {r1}), diciembre = Fichero('0', {r1}, "20261231", otra);
  const struct {
    const char* que;
    R devuelto;
    std::vector<R> presentadas;
    EstadoCotejo estado;
    std::string donde;  // el fichero y el registro hallados
  } casos[] = {
      {"por el fichero original",
       Fichero('2', {r1}),
       {diciembre, noviembre},
       EstadoCotejo::Hallada,
       "1.Q19, registro 3"},
      {"sin él, por la fecha",
       Fichero('2', {r1}, "20261231", ""),
       {diciembre, noviembre},
       EstadoCotejo::Hallada,
       "0.Q19, registro 3"},
      {"si no está, por lo demás",
       Fichero('2', {r1}, "20261201", "PRE-OTRO"),
       {noviembre},
       EstadoCotejo::Hallada,
       "0.Q19, registro 3"},
      {"dos iguales en una remesa", Fichero('2', {r1}), {Fichero('0', {r1, r1})}, EstadoCotejo::Ambigua, ""},
      {"en dos remesas sin saber cuál",
       Fichero('2', {r1}, "00000000", ""),
       {diciembre, noviembre},
       EstadoCotejo::Ambigua,
       ""},
      {"copia de la remesa",
       Fichero('2', {r1}),
       {noviembre, noviembre},
       EstadoCotejo::Hallada,
       "0.Q19, registro 3"},
      {"otra hecha con ella",
       Fichero('2', {r1}),
       {noviembre, Fichero('0', {r1, {"R2", "M2", "00000000001", ""}})},
       EstadoCotejo::Hallada,
       "0.Q19, registro 3"},
      {"otro importe",
       Fichero('2', {{"R1", "M1", "00000000101", "AM04"}}),
       {noviembre},
       EstadoCotejo::NoHallada,
       ""},
      {"otro acreedor",
       Fichero('2', {r1}),
       {Fichero('0', {r1}, "20261201", kOriginal, "ES70000B99812034")},
       EstadoCotejo::NoHallada,
       ""},
      {"otro sufijo del acreedor",
       Fichero('2', {r1}),
       {Fichero('0', {r1}, "20261201", kOriginal, "ES33007B99654105")},
       EstadoCotejo::Hallada,
       "0.Q19, registro 3"},
      {"sin referencia",
       Fichero('2', {{"", "M1", "00000000100", "AM04"}}),
       {Fichero('0', {r1, {"NOTPROVIDED", "M1", "00000000100", ""}})},
       EstadoCotejo::Hallada,
       "0.Q19, registro 4"},
      {"sin ninguna referencia",
       Fichero('2', {{"", "", "00000000100", "AM04"}}),
       {Fichero('0', {{"", "", "00000000100", ""}})},
       EstadoCotejo::NoHallada,
       ""},
  };
  for (const auto& caso : casos) {
    SCOPED_TRACE(caso.que);
    Lote lote;
    lote.leer(escribir("dev", Unidos(caso.devuelto)));
    Cotejo cotejo(lote);
    for (std::size_t i = 0; i < caso.presentadas.size(); ++i) {
      const bool copia = i > 0 && caso.presentadas[i] == caso.presentadas[i - 1];
      EXPECT_EQ(cotejo.buscarEn(escribir(std::to_string(i) + ".Q19", Unidos(caso.presentadas[i], "\n"))),
                !copia);
    }
    const auto hallazgo = cotejo.hallazgo(0);
    EXPECT_EQ(hallazgo.estado, caso.estado);
    const std::string donde = TextoCotejo(cotejo, hallazgo).toStdString();
    EXPECT_TRUE(caso.donde.empty() ? !donde.empty() : donde == caso.donde) << donde;
  }
}

TEST_F(Siguiente, HaceLaRemesaConLosRegistrosEnteros) {
  const Caso z{"Z", "M1", "00000000100", "AM04"}, a{"A", "M2", "00000000250", "MS03"},
      mal{"B", "M3", "00000000300", "AC04"}, muerto{"C", "M4", "00000000400", "MD07"};
  auto noviembre = Fichero('0', {z, mal, a, muerto});
  const std::string cuarto =
      pruebas::Registro("0319143004", {{kReferenciaAdeudo, "A"}, {kReferenciaMandato, "M2"}});
  const std::string sexto =
      pruebas::Registro("0319143006", {{kReferenciaAdeudo, "A"}, {kReferenciaMandato, "M2"}});
  noviembre.insert(noviembre.begin() + 5, {cuarto, sexto});
  presentar("noviembre.Q19", noviembre);
  // La misma referencia en la remesa de otro acreedor es otra deuda; en otra del mismo, la misma.
  const Caso otro{"Z", "M1", "00000000100", "AM04"};
  presentar("otro.Q19", Fichero('0', {otro}, "20261231", "PRE-B", "ES70000B99812034"));
  presentar("diciembre.Q19", Fichero('0', {z}, "20261231", "PRE-C"));
  const Caso perdido{"P", "M9", "00000000001", "AM04"};
  leer(Unidos(Fichero('2', {z, mal, a, muerto, perdido})));
  leer(Unidos(Fichero('2', {otro}, "20261231", "PRE-B", "ES70000B99812034")), "b");
  leer(Unidos(Fichero('2', {z}, "20261231", "PRE-C")), "c");
  const Cotejo cotejo = cotejar();

  EXPECT_EQ(Propuestas(lote_), (std::vector<std::size_t>{0, 2, 4, 5, 6}));
  PeticionNueva peticion{{0, 2, 3, 4, 5, 6}, 2027y / 1 / 4, local_days(2026y / 12 / 9) + 8h + 30min};
  const RemesaNueva nueva = HacerRemesa(lote_, cotejo, peticion);
  const auto registros = pruebas::Bytes(nueva.registros);
  ASSERT_EQ(registros.size(), 13U);
  EXPECT_EQ(LeerCampo(registros[0], kIdentificacionFichero), "PRE2026120908300000000ACUARIO000000");
  EXPECT_EQ(LeerCampo(registros[0], kFechaCreacion), "20261209");
  for (const std::size_t i : {1, 8})
    EXPECT_EQ(LeerCampo(registros[i], kFechaCobro), "20270104");
  // Por referencia, con los opcionales detrás de su adeudo y sin cambiar nada.
  EXPECT_EQ(registros[2], noviembre[4]);
  EXPECT_EQ(registros[3], cuarto);
  EXPECT_EQ(registros[4], sexto);
  EXPECT_EQ(registros[5], noviembre[2]);
  EXPECT_EQ(Recortar(LeerCampo(registros[9], kReferenciaAdeudo)), "Z-2");
  EXPECT_EQ(nueva.adeudos, 3U);
  EXPECT_EQ(nueva.importe, 450);
  EXPECT_EQ(nueva.conSufijo, 1U);
  EXPECT_EQ(nueva.otrosPresentadores.size(), 1U);
  std::uint64_t errores = 0;
  ComprobarLista(nueva.registros, 2026y / 12 / 9, [&](Hallazgo&& h) {
    errores += h.codigo == CodigoHallazgo::TotalImportes || h.codigo == CodigoHallazgo::TotalAdeudos ||
               h.codigo == CodigoHallazgo::TotalRegistros || h.codigo == CodigoHallazgo::FueraDeOrden ||
               h.codigo == CodigoHallazgo::OtraCabecera || h.codigo == CodigoHallazgo::SinOrdenar ||
               h.codigo == CodigoHallazgo::ReferenciaRepetida;
  });
  EXPECT_EQ(errores, 0U);
  ASSERT_EQ(nueva.fuera.size(), 3U);
  const std::pair<std::size_t, CausaFuera> fuera[] = {
      {3, CausaFuera::Nunca}, {4, CausaFuera::NoHallada}, {6, CausaFuera::YaIncluida}};
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(nueva.fuera[i].devolucion, fuera[i].first);
    EXPECT_EQ(nueva.fuera[i].causa, fuera[i].second);
    EXPECT_FALSE(TextoFuera(nueva.fuera[i]).isEmpty());
  }

  peticion.conSufijo = true;
  peticion.elegidas = {2};
  const auto conSufijo = pruebas::Bytes(HacerRemesa(lote_, cotejo, peticion).registros);
  for (const std::size_t i : {2, 3, 4})
    EXPECT_EQ(Recortar(LeerCampo(conSufijo[i], kReferenciaAdeudo)), "A-2");
  peticion.elegidas = {4};
  EXPECT_TRUE(HacerRemesa(lote_, cotejo, peticion).registros.empty());
}

// Un bloque entero son sus adeudos, menos los que tienen su línea, que es la que dice si van. Sea la remesa
// de texto o el XML en que se exportó.
TEST_F(Siguiente, UnBloqueEnteroSonLosSuyos) {
  const std::string larga(35, 'L');
  auto remesa = Fichero('0', {{"R1", "M1", "00000000100", ""},
                              {larga, "M2", "00000000200", ""},
                              {"DE OTRO TIPO", "M5", "00005000000", ""},
                              {larga, "M3", "00000000300", ""}});
  EscribirCampo(remesa[4], kTipoAdeudo, "OOFF");
  const auto texto = escribir("r.Q19", Unidos(remesa)), xml = carpeta_ / "r.xml";
  std::vector<std::unique_ptr<iso20022::Fuente>> fuentes;
  fuentes.push_back(std::make_unique<iso20022::FuenteFichero>(texto));
  iso20022::Exportacion exportacion(std::move(fuentes), {});
  ASSERT_TRUE(exportacion.examinar([](const iso20022::Nota&) {})->posible);
  exportacion.escribir(xml);
  const std::string id(kOriginal);
  leer(Xml("CstmrPmtStsRpt",
           "<OrgnlGrpInfAndSts><OrgnlMsgId>" + id +
               "</OrgnlMsgId></OrgnlGrpInfAndSts><OrgnlPmtInfAndSts><OrgnlPmtInfId>" + id.substr(0, 33) +
               "-1</OrgnlPmtInfId><OrgnlNbOfTxs>3</OrgnlNbOfTxs><PmtInfSts>RJCT</PmtInfSts><StsRsnInf><Rsn>"
               "<Cd>TM01</Cd></Rsn></StsRsnInf><TxInfAndSts><OrgnlEndToEndId>R1</OrgnlEndToEndId><StsRsnInf>"
               "<Rsn><Cd>MD07</Cd></Rsn></StsRsnInf></TxInfAndSts></OrgnlPmtInfAndSts>"));
  for (const auto& presentada : {texto, xml}) {
    Cotejo cotejo(lote_);
    cotejo.buscarEn(presentada);
    const RemesaNueva nueva = HacerRemesa(lote_, cotejo, {Propuestas(lote_), 2027y / 1 / 4, {}});
    EXPECT_EQ(nueva.adeudos, 2U) << presentada;
    EXPECT_EQ(nueva.importe, 500) << presentada;
    ASSERT_EQ(nueva.registros.size(), 7U);
    EXPECT_EQ(LeerCampo(nueva.registros[2], kReferenciaAdeudo), std::string(33, 'L') + "-2");
    EXPECT_EQ(LeerCampo(nueva.registros[3], kReferenciaAdeudo), larga);
  }
}

TEST(Siguientes, ProponeElPrimerDiaHabilConUnDiaDePlazo) {
  const std::pair<Dia, Dia> casos[] = {{2026y / 11 / 25, 2026y / 11 / 26},
                                       {2026y / 11 / 27, 2026y / 11 / 30},
                                       {2026y / 12 / 24, 2026y / 12 / 28},
                                       {2026y / 12 / 31, 2027y / 1 / 4}};
  for (const auto& [hoy, cobro] : casos)
    EXPECT_EQ(FechaPropuesta(hoy), cobro);
}

}  // namespace
