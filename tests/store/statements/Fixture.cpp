#include "store/statements/Fixture.h"

#include "store/Database.h"
#include "store/NewStore.h"

#include <map>

using namespace Qt::StringLiterals;

namespace pontrel::test {

namespace {

/// The rows of one table: the columns that they fill, and the values of each row in the order of insertion.
struct Filling {
    const char16_t* table;
    const char16_t* columns;
    std::vector<const char16_t*> rows;
};

std::vector<Filling> masterData() {
    return {
        {u"Base01", u"TitleNo,Title", {u"'02','專員'", u"'01','科長'"}},
        {u"Base02", u"UnitNo,Unit", {u"'0200','總務室'", u"'0100','人事室'", u"'a300','資訊室'"}},
        {u"Base03", u"WorkNo,WorkType", {u"'2','約聘'", u"'1','正式'"}},
        {u"Base04",
         u"TimeNo,TimeName,CardType,StdC1,StdC4,StrIn1,StdT1,StdT4,EndOut4,Rest,ElstType,ElstMin,"
         u"Cushion,Delay,Earlier,Cushion1,Delay1,Earlier1",
         {u"'B','夜班',2,True,True,#21:00:00#,#22:00:00#,#06:00:00#,#07:00:00#,True,0,0,10,20,15,10,20,15"}},
        {u"Base04",
         u"TimeNo,TimeName,CardType,StdC1,StdC2,StdC3,StdC4,StrIn1,StrIn3,StdT1,StdT2,StdT3,StdT4,"
         u"EndOut2,EndOut4,ElstType,ElstMin,Cushion,Delay,Earlier,Cushion1,Delay1,Earlier1",
         {u"'A','日班',4,True,True,True,True,#07:00:00#,#12:31:00#,#08:00:00#,#12:00:00#,#13:00:00#,"
          u"#17:00:00#,#12:30:00#,#19:00:00#,0,0,5,25,10,5,25,10"}},
        {u"Base05",
         u"ClsNo,ClassName,TimeNo1,TimeNo2,TimeDay1,TimeDay2,TimeRest1,TimeRest2,ChkHoli",
         {u"'020','輪班','','B',1,2,0,1,False", u"'010','常日班','A','B',5,3,2,1,True"}},
        {u"Base06",
         u"EmpNo,EmpName,Sex,IdNo,UnitNo,ClsNo,TitleNo,WorkNo,SuitNo,Birth,ArriveDate,IniArrDate,BreakY,"
         u"SoldierY,HoliExper,ThisYearHD,ThisYearUse,ThisYearLeft,LastYearHD,LastYearUse,LastYearLeft,"
         u"LeaveHD,LeaveUse,LeaveLeft,SickHD,SickUse,SickLeft",
         {u"'00002','陳大文',True,'A123456789','0100','010','01','1','1',#1970/05/06#,#1995/07/01#,"
          u"#1990/03/15#,14,24,14,7,1.4,5.4,2,0,2,5,0,5,30,0.4,29.4"}},
        {u"Base06",
         u"EmpNo,EmpName,UnitNo,ClsNo,TitleNo,WorkNo,SuitNo,Birth,ArriveDate,HoliExper",
         {u"'00001','林小明','0200','010','02','2','2',#1975/11/20#,#2001/03/05#,3"}},
        {u"Base06",
         u"EmpNo,EmpName,UnitNo,ClsNo,TitleNo,WorkNo,ArriveDate,LeaveDate",
         {u"'00003','王離職','0100','020','02','1',#1990/01/01#,#2001/03/05#"}},
        {u"Base06",
         u"EmpNo,EmpName,UnitNo,ClsNo,WorkNo,SuitNo,ArriveDate",
         {u"'a0001','Ann Lee','a300','020','1','1',#2001/03/06#"}},
        {u"Base06",
         u"EmpNo,EmpName,UnitNo,Birth,ArriveDate,LeaveDate",
         {u"'00004','李哨兵','0200',#2038/01/01#,#2038/01/01#,#2038/01/01#"}},
    };
}

std::vector<Filling> rosterData() {
    return {
        {u"Rule01", u"hymd", {u"#2001/02/28#", u"#2001/01/01#", u"#2001/10/10#"}},
        {u"Rule03",
         u"EmpNo,YMD,TimeNo",
         {u"'00002',#2001/03/06#,'B'", u"'00002',#2001/03/05#,'A'", u"'00001',#2001/03/05#,'A'",
          u"'00001',#2001/03/06#,''", u"'00003',#2001/03/05#,'B'", u"'a0001',#2001/03/05#,'A'",
          u"'00003',#2001/03/06#,'A'"}},
    };
}

std::vector<Filling> attendanceData() {
    return {
        {u"AtteTemp",
         u"EmpNo,UseDate,UseTime,class,ReaderID",
         {u"'00001',#2001/03/05#,#17:01:00#,'255','001'", u"'00001',#2001/03/05#,#08:00:59#,'255','001'",
          u"'00002',#2001/03/05#,#20:30:00#,'081','002'", u"'00002',#2001/03/05#,#18:00:00#,'081','002'",
          u"'00002',#2001/03/05#,#18:00:00#,'081','002'", u"'00002',#2001/03/05#,#08:03:00#,'000','001'",
          u"'00002',#2001/03/05#,#12:15:00#,'082','001'", u"'00001',#2001/03/04#,#08:00:00#,'255','001'",
          u"'00003',#2001/03/05#,#18:30:00#,'081','003'"}},
        {u"AtteTemp", u"EmpNo,UseDate,UseTime,class", {u"'00003',#2001/03/05#,#21:55:00#,'255'"}},
        {u"Atte01",
         u"EmpNo,UseDate,UseTime,class,ReaderID",
         {u"'00002',#2001/03/05#,#08:03:00#,'000','001'", u"'00001',#2001/03/04#,#08:00:00#,'255','001'",
          u"'00001',#2001/03/02#,#08:10:00#,'255','001'", u"'00001',#2001/03/05#,#08:00:59#,'255','001'"}},
        {u"AtteTemp1",
         u"EmpNo,UseDate,TimeNo,Time1,Time2,Time3,Time4,FT1,FT2,FT3,FT4,T1,T2,Delay3,Earlier4",
         {u"'00001',#2001/03/05#,'A',#08:00:00#,#11:59:00#,#13:20:00#,#16:40:00#,True,True,True,True,"
          u"#18:00:00#,#00:00:00#,15,20"}},
        {u"AtteTemp1",
         u"EmpNo,UseDate,TimeNo,Time1,FT1,FH3,FH4,FC2,T1,Cushion1",
         {u"'00002',#2001/03/05#,'A',#08:03:00#,True,True,True,True,#20:30:00#,3"}},
        {u"AtteTemp1", u"EmpNo,UseDate,TimeNo", {u"'00002',#2001/03/05#,'A'"}},
        {u"AtteTemp1",
         u"EmpNo,UseDate,TimeNo,Time1,Time2,FT1,FT2,F3,F4,Expt",
         {u"'00001',#2001/03/04#,'A',#08:00:00#,#12:00:00#,True,True,True,True,True"}},
        {u"AtteTemp1",
         u"EmpNo,UseDate,Time1,Time2,FT1,FT2",
         {u"'00003',#2001/03/05#,#12:00:00#,#09:00:00#,True,True"}},
        {u"Atte02",
         u"EmpNo,UseDate,TimeNo,Time1,FT1,F2,Expt,DelayF,Cushion1,Delay1,Earlier2",
         {u"'00002',#2001/03/05#,'A',#08:03:00#,True,True,True,2,3,5,7"}},
        {u"Atte02",
         u"EmpNo,UseDate,TimeNo,F4,Expt,DelayF,Cushion1,Cushion3,Delay1,Earlier2,Earlier4",
         {u"'00001',#2001/03/04#,'A',True,True,4,2,4,5,1,2"}},
        {u"Atte02",
         u"EmpNo,UseDate,TimeNo,F3,Expt,DelayF,Delay3",
         {u"'00001',#2001/03/03#,'A',True,True,3,10"}},
        {u"Atte02", u"EmpNo,UseDate,TimeNo", {u"'00003',#2001/03/05#,'B'"}},
        {u"Atte03",
         u"EmpNo,UseDate,TimeNo,Time1,FT1,F2,Expt,DelayF,Cushion1,Delay1,Earlier2",
         {u"'00002',#2001/03/05#,'A',#08:03:00#,True,True,True,2,3,5,7"}},
        {u"Atte03", u"EmpNo,UseDate,TimeNo,F1,Expt", {u"'00001',#2001/03/05#,'A',True,True"}},
        {u"Atte03",
         u"EmpNo,UseDate,TimeNo,F4,Expt,DelayF,Cushion1,Cushion3,Delay1,Earlier2,Earlier4",
         {u"'00001',#2001/03/04#,'A',True,True,4,2,4,5,1,2"}},
        {u"View02", u"EmpNo,UseDate,T1,T2", {u"'00002',#2001/03/05#,#08:03:00#,#00:00:00#"}},
        {u"View02", u"EmpNo,UseDate,T1,T2,T3", {u"'00001',#2001/03/05#,#08:00:00#,#17:01:00#,#00:00:00#"}},
        {u"View02", u"EmpNo,UseDate,T1", {u"'00001',#2001/03/04#,#00:00:00#"}},
    };
}

std::vector<Filling> leaveData() {
    return {
        {u"Holi01", u"HoliNo,HoliType,HoliDeduct", {u"'04','病假',False"}},
        {u"Holi01", u"HoliNo,HoliType,HoliDeduct,Memo", {u"'01','特休',True,'年度'"}},
        {u"Holi01", u"HoliNo,HoliType", {u"'14','公出'"}},
        {u"Holi01", u"HoliNo,HoliType,HoliDeduct,Memo", {u"'03','事假',True,''"}},
        {u"Holi02",
         u"SuitNo,HoliNo,HoliYearBeg,HoliYearEnd,HoliDays",
         {u"'1','01',3,5,10", u"'1','01',1,3,7", u"'2','04',0,99,30", u"'1','99',0,9,1",
          u"'9','01',0,9,2.5"}},
        {u"Holi03",
         u"BusNo,EmpNo,RepEmpNo,HoliNo,HoliBegDate,HoliBegTime,HoliEndDate,HoliEndTime,HoliHours,HoliDesc,"
         u"Money,Account,TransDate,TransType",
         {u"'200103050002','00001','00002','03',#2001/03/05#,#13:00:00#,#2001/03/07#,#12:00:00#,2,'返鄉',"
          u"True,'admin',#2001-Mar-05 09:10:11#,True"}},
        {u"Holi03",
         u"BusNo,EmpNo,HoliNo,HoliBegDate,HoliBegTime,HoliEndDate,HoliEndTime,HoliHours,Account,TransType",
         {u"'200103050001','00002','01',#2001/03/05#,#08:00:00#,#2001/03/05#,#17:00:00#,1,'admin',True",
          u"'200103060001','00001','04',#2001/03/09#,#08:00:00#,#2001/03/09#,#12:00:00#,0.4,'admin',True",
          u"'200102010001','00001','01',#2001/02/01#,#10:30:00#,#2001/02/01#,#17:00:00#,0.6,'admin',True"}},
        {u"Holi04",
         u"BusNo,EmpNo,HoliNo,HoliDate,BegTime,EndTime,HoliHours,TimeNo",
         {u"'200103050002','00001','03',#2001/03/05#,#13:00:00#,#17:00:00#,4,'A'",
          u"'200103050002','00001','03',#2001/03/06#,#08:00:00#,#17:00:00#,8,''",
          u"'200103050002','00001','03',#2001/03/07#,#08:00:00#,#12:00:00#,4,''",
          u"'200103050001','00002','01',#2001/03/05#,#08:00:00#,#17:00:00#,8,'A'",
          u"'200102010001','00001','01',#2001/02/01#,#10:30:00#,#17:00:00#,6,'A'",
          u"'200103060001','00001','04',#2001/03/09#,#08:00:00#,#12:00:00#,4,''"}},
    };
}

std::vector<Filling> writeOffData() {
    return {
        {u"Canc01", u"CnlNo,CnlName", {u"'B2','公出'"}},
        {u"Canc01", u"CnlNo,CnlName,Memo", {u"'A1','忘刷卡','常見'"}},
        {u"Canc01", u"CnlNo,CnlName", {u"'C33','長碼'", u"'D4','A1'"}},
        {u"Canc02",
         u"EmpNo,CnlDate,CnlNo2,Account,TransDate",
         {u"'00002',#2001/03/05#,'B2','admin',#2001-Mar-06 10:00:00#"}},
        {u"Canc02",
         u"EmpNo,CnlDate,CnlNo1,CnlNo2,CnlNo3,CnlNo4,Account",
         {u"'00001',#2001/03/05#,'A1','A1','','B2','admin'"}},
        {u"Canc02", u"EmpNo,CnlDate,CnlNo1", {u"'00001',#2001/01/10#,'B2'", u"'00003',#2001/03/05#,'A1'"}},
        {u"View01",
         u"EmpNo,BegDate,EndDate,CnlNo,CnlTimes,AddUpTimes",
         {u"'00001',#2001/03/01#,#2001/03/31#,'A1',2,0", u"'00001',#2001/03/01#,#2001/03/31#,'B2',0,5",
          u"'00002',#2001/03/01#,#2001/03/31#,'B2',1,1", u"'00002',#2001/03/01#,#2001/03/31#,'A1',0,0"}},
        {u"View03",
         u"EmpNo,CnlDate,CnlNo1,CnlNo2,CnlNo3,CnlNo4",
         {u"'00001',#2001/03/05#,'A1','A1','','B2'"}},
        {u"View03", u"EmpNo,CnlDate,CnlNo2,CnlNo3,CnlNo4", {u"'00002',#2001/03/05#,'b2','D4','ZZ'"}},
    };
}

std::vector<Filling> overtimeAndSettings() {
    return {
        {u"Over01",
         u"EmpNo,OverDate,BegTime,EndTime,OverHours,Memo,Rest,Account,TransDate",
         {u"'00002',#2001/03/05#,#18:00:00#,#20:30:00#,2,'結帳',True,'admin',#2001-Mar-05 21:00:00#"}},
        {u"Over01", u"EmpNo,OverDate,BegTime,OverHours", {u"'00001',#2001/03/05#,#18:30:00#,0"}},
        {u"Over01",
         u"EmpNo,OverDate,BegTime,EndTime,OverHours",
         {u"'00001',#2001/02/20#,#18:00:00#,#21:00:00#,3", u"'A0001',#2001/03/06#,#18:00:00#,#19:59:00#,1"}},
        {u"Over01", u"EmpNo,OverDate,BegTime", {u"'00002',#2001/03/20#,#18:00:00#"}},
        {u"Syst01",
         u"HandPath,LenEmpNo,IntervalSec,HoliMin,OverTimeMin,ThisYearRest,LastYearRest,Leave,Sick,CmpName",
         {u"'punch',5,10,60,60,'01','02','03','04','示範公司'"}},
        {u"syst02", u"Account,Password,f1,f8", {u"'abc','Pw1',True,True"}},
        {u"syst02",
         u"Account,Password,f1,f2,f3,f4,f5,f6,f7,f8",
         {u"'ABC','pw1',True,True,True,True,True,True,True,False"}},
        {u"Syst03", u"SuitNo,SuitRule", {u"'2','約聘人員'", u"'1','公務人員'"}},
    };
}

std::vector<Filling> allFillings() {
    std::vector<Filling> all;
    for (const auto& part :
         {masterData(), rosterData(), attendanceData(), leaveData(), writeOffData(), overtimeAndSettings()}) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

} // namespace

QStringList fixtureStatements() {
    // A new store has its settings row, schemes and an account, which give way to rows that are known here.
    QStringList statements{u"delete * from Syst01"_s, u"delete * from syst02"_s, u"delete * from Syst03"_s};
    for (const Filling& filling : allFillings()) {
        for (const char16_t* row : filling.rows) {
            statements << u"Insert into %1(%2) Values(%3)"_s.arg(QString::fromUtf16(filling.table),
                                                                 QString::fromUtf16(filling.columns),
                                                                 QString::fromUtf16(row));
        }
    }
    return statements;
}

std::size_t fixtureCount(const QString& table) {
    std::size_t count = 0;
    for (const Filling& filling : allFillings()) {
        if (QString::fromUtf16(filling.table) == table) {
            count += filling.rows.size();
        }
    }
    return count;
}

void createFixtureStore(const QString& path) {
    createStore(path, NewStore{u"punch"_s, u"first"_s, u"secret"_s});
    Database database(path);
    Stage stage(database);
    for (const QString& statement : fixtureStatements()) {
        database.execute(statement);
    }
    stage.finish();
}

} // namespace pontrel::test
