#include "Devueltos.h"

using namespace devoluciones;
using namespace remesa;
using namespace pruebas;

namespace {

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
      {mensaje("X", "<OrgnlNbOfTxs>5</OrgnlNbOfTxs><GrpSts>RJCT</GrpSts>" + am04, bloque(operacion(""))),
       "A|R1|-|-|AM04|-|||2026-12-04X|P-1\nM|-|-|-|AM04|-|||2026-12-04X|-|4", ""},
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

}  // namespace
