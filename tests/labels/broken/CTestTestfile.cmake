# Tests as the check must not let pass, beside one that it must.
foreach(name right without with_two strange)
  add_test(${name} cmake --version)
endforeach()
set_tests_properties(right PROPERTIES LABELS unit)
set_tests_properties(with_two PROPERTIES LABELS "unit;storm")
set_tests_properties(strange PROPERTIES LABELS smoke)
