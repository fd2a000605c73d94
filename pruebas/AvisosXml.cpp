#include <gtest/gtest.h>

#include <QStringList>

#include "Carpeta.h"
#include "iso20022/LecturaMensaje.h"
#include "iso20022/Textos.h"
#include "remesa/Campos.h"

// Lo que se dice al leer un mensaje XML.

using namespace pruebas;
using namespace Qt::StringLiterals;

namespace {

/// Un mensaje de un adeudo, del que no hay nada que decir.
const char* const kMensaje =
    R"(<?xml version="1.0" encoding="UTF-8"?><Document xmlns="urn:iso:std:iso:20022:tech:xsd:pain.008.001.08">)"
    "<CstmrDrctDbtInitn><GrpHdr><MsgId>M1</MsgId><CreDtTm>2026-11-05T00:00:00</CreDtTm><NbOfTxs>1</NbOfTxs>"
    "<CtrlSum>12.34</CtrlSum><InitgPty><Nm>P</Nm></InitgPty></GrpHdr><PmtInf><PmtInfId>B</PmtInfId>"
    "<PmtMtd>DD</PmtMtd><PmtTpInf><SvcLvl><Cd>SEPA</Cd></SvcLvl><LclInstrm><Cd>CORE</Cd></LclInstrm>"
    "<SeqTp>RCUR</SeqTp></PmtTpInf><ReqdColltnDt>2026-12-01</ReqdColltnDt><Cdtr><Nm>C</Nm></"
    "Cdtr><CdtrAcct><Id>"
    "<IBAN>ES9121000418450200051332</IBAN></Id></CdtrAcct><CdtrAgt><FinInstnId><Othr><Id>NOTPROVIDED</Id></"
    "Othr>"
    "</FinInstnId></CdtrAgt><CdtrSchmeId><Id><PrvtId><Othr><Id>ES08000E77846772</Id></Othr></PrvtId></Id>"
    "</CdtrSchmeId><DrctDbtTxInf><PmtId><EndToEndId>R1</EndToEndId></PmtId><InstdAmt "
    "Ccy=\"EUR\">12.34</InstdAmt>"
    "<DrctDbtTx><MndtRltdInf><MndtId>M</MndtId><DtOfSgntr>2020-02-29</DtOfSgntr></MndtRltdInf></"
    "DrctDbtTx><DbtrAgt>"
    "<FinInstnId><BICFI>CAIXESBB</BICFI></FinInstnId></DbtrAgt><Dbtr><Nm>ANA</Nm></Dbtr><DbtrAcct><Id>"
    "<IBAN>ES9121000418450200051332</IBAN></Id></DbtrAcct></DrctDbtTxInf></PmtInf></CstmrDrctDbtInitn></"
    "Document>";

struct CasoLeido {
  const char* quitar;
  const char* poner;
  const char* avisos;  // "código elemento", separados por ", "
  remesa::Posiciones donde{0, 0};
  std::string vale = {};
  std::size_t registro = 2;  // el 003
};

const std::vector<CasoLeido> kLeidos{
    {"", "", "", {108, 118}, "CAIXESBB"},
    {"<BICFI>CAIXESBB</BICFI>", "<BIC>CAIXESBB</BIC>", "", {108, 118}, "CAIXESBB"},
    {"RCUR", "RPRE", "A601 PmtInf/PmtTpInf/SeqTp", {81, 84}, ""},
    {"<InstdAmt", "<PmtTpInf><SeqTp>FRST</SeqTp></PmtTpInf><InstdAmt", "", {81, 84}, "FRST"},
    {"12.34</I",
     "12.345</I",
     "A604 PmtInf/DrctDbtTxInf/InstdAmt, A606 GrpHdr/CtrlSum",
     {89, 99},
     "00000000000"},
    {"12.34</I", "12.3400</I", "", {89, 99}, "00000001234"},
    {"12.34</I", "12.3</I", "A606 GrpHdr/CtrlSum", {89, 99}, "00000001230"},
    {"12.34</I", "1e3</I", "A604 PmtInf/DrctDbtTxInf/InstdAmt, A606 GrpHdr/CtrlSum", {89, 99}, "00000000000"},
    {"12.34</I",
     "-12.34</I",
     "A604 PmtInf/DrctDbtTxInf/InstdAmt, A606 GrpHdr/CtrlSum",
     {89, 99},
     "00000000000"},
    {"12.34</I",
     "1000000000.00</I",
     "A604 PmtInf/DrctDbtTxInf/InstdAmt, A606 GrpHdr/CtrlSum",
     {89, 99},
     "00000000000"},
    {"Ccy=\"EUR\"",
     "Ccy=\"USD\"",
     "A604 PmtInf/DrctDbtTxInf/InstdAmt, A606 GrpHdr/CtrlSum",
     {89, 99},
     "00000000000"},
    {"<InstdAmt Ccy=\"EUR\">12.34</InstdAmt>",
     "",
     "A604 PmtInf/DrctDbtTxInf/InstdAmt, A606 GrpHdr/CtrlSum",
     {89, 99},
     "00000000000"},
    {">1</NbOfTxs", ">2</NbOfTxs", "A606 GrpHdr/NbOfTxs"},
    {"</GrpHdr>", "</GrpHdr><GrpHdr><MsgId>M2</MsgId></GrpHdr>", "A605 GrpHdr/MsgId", {124, 158}, "M1", 0},
    {"<EndToEndId>R1",
     "<InstrId>I</InstrId><EndToEndId>NOTPROVIDED",
     "A601 PmtInf/DrctDbtTxInf/PmtId/InstrId",
     {11, 45},
     ""},
    {"<PmtMtd>DD", "<PmtMtd>TRF", "A607 PmtInf/PmtMtd"},
    {"CORE", "COR1", "A607 PmtInf/PmtTpInf/LclInstrm/Cd"},
    {"2020-02-29", "2021-02-29", "A608 PmtInf/DrctDbtTxInf/DrctDbtTx/MndtRltdInf/DtOfSgntr", {100, 107}, ""},
    {"2026-12-01", "2026-12-011", "A608 PmtInf/ReqdColltnDt", {46, 53}, "", 1},
    {"</MndtRltd", "<AmdmntInd>true</AmdmntInd></MndtRltd", "A609 PmtInf/DrctDbtTxInf"},
    {"</MndtRltd",
     "<AmdmntInd>false</AmdmntInd><AmdmntInfDtls><OrgnlMndtId>X</OrgnlMndtId></AmdmntInfDtls></MndtRltd",
     "A607 PmtInf/DrctDbtTxInf/DrctDbtTx/MndtRltdInf/AmdmntInd",
     {81, 115},
     "X",
     3},
    {"ANA",
     "A\nN\tA \xC3\x91 \xE2\x82\xAC",
     "A603 PmtInf/DrctDbtTxInf/Dbtr/Nm",
     {119, 188},
     "A N A \xD1 \x80"},
    {"ANA", "N\xCC\x83 \xC5\x82 \xC4\x87", "A603 PmtInf/DrctDbtTxInf/Dbtr/Nm", {119, 188}, "\xD1 ? c"},
    {"ANA", "<![CDATA[A&N]]>&amp;<!-- no -->A", "", {119, 188}, "A&N&A"},
    {"ANA</Nm>", "ANA</Nm><Nm>OTRA</Nm>", "A605 PmtInf/DrctDbtTxInf/Dbtr/Nm", {119, 188}, "ANA"},
    {"ANA</Nm>",
     "ANA</Nm><PstlAdr><StrtNm>CALLE</StrtNm><BldgNb>3</BldgNb><PstCd>28001</PstCd><TwnNm>MADRID</TwnNm>"
     "<Ctry>ES</Ctry></PstlAdr>",
     "",
     {189, 330},
     "CALLE 3" + std::string(43, ' ') + "28001 MADRID" + std::string(78, ' ') + "ES"},
    {"ANA</Nm>",
     "ANA</Nm><PstlAdr><Ctry>ES</Ctry><AdrLine>UNA</AdrLine><AdrLine>DOS</AdrLine></PstlAdr>",
     "",
     {189, 288},
     "UNA" + std::string(47, ' ') + "DOS"},
    {"ANA</Nm>",
     "ANA</Nm><CtctDtls><Nm>OTRA</Nm></CtctDtls>",
     "A601 PmtInf/DrctDbtTxInf/Dbtr/CtctDtls/Nm",
     {119, 188},
     "ANA"},
    {"</DrctDbtTx><DbtrAgt>",
     "<CdtrSchmeId><Id><PrvtId><Othr><Id>ES53000A12345678</Id></Othr></PrvtId></Id></CdtrSchmeId></"
     "DrctDbtTx><DbtrAgt>",
     "",
     {11, 45},
     "ES53000A12345678",
     1},
    {"<CdtrSchmeId>", "<UltmtCdtr><Nm>U</Nm></UltmtCdtr><CdtrSchmeId>", "", {81, 150}, "U", 3},
    {"</MndtRltd",
     "<AmdmntInd>true</AmdmntInd><AmdmntInfDtls><OrgnlDbtrAgt><FinInstnId><Othr><Id>SMNDA</Id></Othr></"
     "FinInstnId>"
     "</OrgnlDbtrAgt></AmdmntInfDtls></MndtRltd",
     "",
     {255, 259},
     "SMNDA",
     3},
};

QString Cambiado(const char* quitar, const char* poner) {
  QString mensaje = QString::fromUtf8(kMensaje);
  const QString que = QString::fromUtf8(quitar);
  EXPECT_TRUE(que.isEmpty() || mensaje.contains(que)) << quitar;
  if (!que.isEmpty()) mensaje.replace(mensaje.indexOf(que), que.size(), QString::fromUtf8(poner));
  return mensaje;
}

class AvisosXml : public Carpeta {};

}  // namespace

TEST_F(AvisosXml, LoQueUnMensajeDiceYLosRegistrosNo) {
  for (const CasoLeido& caso : kLeidos) {
    SCOPED_TRACE(caso.poner);
    const auto leido =
        iso20022::LeerMensaje(escribir("leido.xml", Cambiado(caso.quitar, caso.poner).toStdString()));
    QStringList avisos;
    for (const auto& aviso : leido.avisos) {
      avisos += QString::fromLatin1(TextoCodigo(aviso.codigo).data(), 4) + ' ' + aviso.elemento;
      EXPECT_TRUE(TextoAviso(aviso).endsWith('.') && !TextoAviso(aviso).contains('%'))
          << TextoAviso(aviso).toStdString();
    }
    EXPECT_EQ(avisos.join(", ").toStdString(), caso.avisos);
    ASSERT_EQ(leido.registros.size(), caso.registro == 3 ? 7U : 6U) << leido.rechazo.toStdString();
    if (caso.donde.desde > 0) {
      EXPECT_EQ(remesa::Recortar(remesa::LeerCampo(leido.registros[caso.registro], caso.donde)), caso.vale);
    }
  }
  const std::pair<QString, const char*> rechazados[] = {
      {Cambiado("CORE", "B2B"), "B2B"},
      {Cambiado("pain.008.001.08", "pain.001.001.09"), "pain.001: transferencias"},
      {Cambiado("pain.008.001.08", "camt.054.001.08"), "camt.054: movimientos"},
      {Cambiado("pain.008.001.08", "pain.008.001.10"), "pain.008.001.10"},
      {u"<fe:Facturae xmlns:fe='x'/>"_s, "factura electrónica"},
      {u"<html/>"_s, "página web"},
  };
  for (const auto& [mensaje, dice] : rechazados) {
    const auto leido = iso20022::LeerMensaje(escribir("leido.xml", mensaje.toStdString()));
    EXPECT_TRUE(leido.rechazo.contains(QString::fromUtf8(dice)))
        << dice << ": " << leido.rechazo.toStdString();
    EXPECT_TRUE(leido.registros.empty());
  }
}
