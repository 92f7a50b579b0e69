# What a release is built with to withstand faults in itself; tools/check_hardening.sh looks for it in
# the program. Checked library functions need the optimiser, which the tests go without.
if(WIN32)
  # Its programs move in memory and keep data from being run by the linker's own choice.
  return()
endif()
include(CheckCXXCompilerFlag)
set(release $<CONFIG:Release>)
target_compile_options(orvello_flags INTERFACE $<${release}:-fPIE> $<${release}:-fstack-protector-strong>)
target_compile_definitions(orvello_flags INTERFACE $<${release}:_FORTIFY_SOURCE=2>)
check_cxx_compiler_flag(-fcf-protection=full ORVELLO_HAS_CONTROL_FLOW_PROTECTION)
if(ORVELLO_HAS_CONTROL_FLOW_PROTECTION)
  target_compile_options(orvello_flags INTERFACE $<${release}:-fcf-protection=full>)
endif()
target_link_options(orvello_flags INTERFACE $<${release}:-pie> $<${release}:-Wl,-z,relro,-z,now>)
