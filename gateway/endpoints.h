#pragma once

#include <string_view>

namespace quorvel {

// The gateway's pages, relative to the server's root.
inline constexpr std::string_view kValidateCrnPath = "Tools/Excel_Plugin/ValidateCRN.asp";
inline constexpr std::string_view kLoginPath = "Tools/Excel_Plugin/LoginCheck.asp";
inline constexpr std::string_view kBalancePath = "Merrow/Get_Balance.asp";
inline constexpr std::string_view kModesPath = "/Merrow/Get_Modes.asp";  // GET, behind the base URL
inline constexpr std::string_view kReportsPath = "Merrow/Get_DR.asp";
inline constexpr std::string_view kTemplatesPath = "Tools/Excel_Plugin/SaveUserMessageExcel07.asp";

// Submissions. Standard and Unicode sends:
inline constexpr std::string_view kSendPath = "Tools/Excel_Plugin/SaveBulkSMS.aspx";
inline constexpr std::string_view kSchedulePath = "Merrow/SaveSchedulerData_Excel_Dynamic.asp";
inline constexpr std::string_view kScheduleManyPath =
    "Merrow_1/SaveSchedulerData_Excel.aspx";  // filtered and grouped too
// Filtered and grouped sends:
inline constexpr std::string_view kSendRecordsPath = "Merrow/SaveExcelData_V2.asp";
inline constexpr std::string_view kSendManyRecordsPath = "Merrow_1/SaveBulkSMS.aspx";
inline constexpr std::string_view kScheduleRecordsPath = "Merrow/SaveSchedulerData_Excel.asp";

}  // namespace quorvel
