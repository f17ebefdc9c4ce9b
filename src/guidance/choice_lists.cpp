#include "guidance/choice_lists.h"

#include <algorithm>

#include "files/plain_lines.h"

namespace tavlo {

namespace {

constexpr const char* device_items[] = {"Accumulator -Hydraulic",
                                        "Additive",
                                        "Adhesive",
                                        "Baffle",
                                        "Bearing -Ball",
                                        "Bearing -Fluid",
                                        "Bearing -Journal",
                                        "Bearing -Roller",
                                        "Bearing -Taper",
                                        "Bearing -Thrust",
                                        "Blade",
                                        "Burner",
                                        "Capacitor",
                                        "Connecting Rod",
                                        "Connector -Electrical",
                                        "Cover -Body",
                                        "Diode",
                                        "Disk",
                                        "Ducting",
                                        "Faring -Aerodynamic",
                                        "Fastener",
                                        "Filter -Air",
                                        "Filter -Fuel",
                                        "Filter -Oil",
                                        "Filter -Water",
                                        "Frame",
                                        "Gear",
                                        "Hinge",
                                        "Housing",
                                        "Igniter",
                                        "Inductor",
                                        "Lever",
                                        "Mounting",
                                        "Microchip",
                                        "Nozzle",
                                        "Orifice",
                                        "Pipe",
                                        "Pipe Joint",
                                        "Piston",
                                        "Plug -Electrical",
                                        "Plug -Mechanical",
                                        "Receptacle -Electrical",
                                        "Resistor",
                                        "Screen -Display",
                                        "Screen -Sieve - Mesh",
                                        "Seal",
                                        "Sensor",
                                        "Shaft -Rotating",
                                        "Shaft -Cam",
                                        "Solder",
                                        "Spacer",
                                        "Stator",
                                        "Switch",
                                        "Tank -Pressure",
                                        "Tank -Storage",
                                        "Termination -Electrical",
                                        "Tire",
                                        "Tool",
                                        "Transistor",
                                        "Valve - Pressure Relief",
                                        "Valve -Check",
                                        "Valve -Metering",
                                        "Wall",
                                        "Wheel",
                                        "WINDING",
                                        "Window",
                                        "Windshield",
                                        "Wiring"};

constexpr const char* equipment_items[] = {"Appliance",
                                           "Axle",
                                           "Battery",
                                           "Boiler",
                                           "Charging System - Electrical",
                                           "Compressor",
                                           "Computer System",
                                           "Entertainment System",
                                           "Controller -Electronic",
                                           "Converter -Electrical",
                                           "Display",
                                           "Drive Train",
                                           "Engine -Mechanical",
                                           "Exhaust System",
                                           "Fan",
                                           "Fuel System",
                                           "Fuselage",
                                           "Gearbox",
                                           "Generator -Electrical",
                                           "Heat Exchanger",
                                           "Hydraulics System",
                                           "Lighting System",
                                           "Lubrication System",
                                           "Microphone",
                                           "Motor -Electrical",
                                           "Propeller",
                                           "Pump",
                                           "Radio",
                                           "Reactor -Nuclear",
                                           "Relay",
                                           "Regulator -Electrical",
                                           "Regulator -Pressure",
                                           "Seating",
                                           "Shield",
                                           "Speaker System",
                                           "Stabilizer",
                                           "Steering System",
                                           "Storage System",
                                           "Suspension System",
                                           "Telephone",
                                           "Transmission",
                                           "Turbine",
                                           "Wing"};

constexpr const char* cause_items[] = {"E1 Elec: Fatigue Equivalent",
                                       "E2 Elec: Insulation Breakdown by Chemical Attack",
                                       "E3 Elec: Insulation Breakdown by Heat",
                                       "E4 Elec: Overload by Load Stall",
                                       "E5 Elec: Overload by Supply Transient",
                                       "E6 Elec: Physical Abrasion",
                                       "E7 Elec: Physical Loosening",
                                       "M1 Mech: Corrosion",
                                       "M2 Mech: Erosion",
                                       "M3 Mech: Fatigue",
                                       "M4 Mech: Overload"};

constexpr const char* duty_items[] = {
    "Abusive Treatment", "Accelerating", "Continuous",  "Crash",          "Decelerating",
    "Heavy Duty",        "Intermittent", "Light Duty",  "Medium Duty",    "Mixed Usage",
    "Normal Operation",  "Stress -High", "Stress -Low", "Stress -Normal", "War Time"};

constexpr const char* environment_items[] = {"Clean",
                                             "Corrosive -Atmosphere",
                                             "Corrosive -Liquid",
                                             "Dirty",
                                             "Humidity -High",
                                             "Humidity -Low",
                                             "Humidity -Normal",
                                             "Mixed Conditions",
                                             "Pressure -High",
                                             "Pressure -Low",
                                             "Pressure -Normal",
                                             "Salt -Fog",
                                             "Shock -High",
                                             "Shock -Low",
                                             "Shock -Normal",
                                             "Temperature -High",
                                             "Temperature -Low",
                                             "Temperature -Normal",
                                             "Vibration -High",
                                             "Vibration -Low",
                                             "Vibration -Normal"};

constexpr const char* device_files[] = {"libdevce.txt"};
constexpr const char* equipment_files[] = {"libequip.txt"};
constexpr const char* cause_files[] = {"libcause-Harlo.txt", "libcause.txt"};
constexpr const char* duty_files[] = {"libusage.txt"};
constexpr const char* environment_files[] = {"libenvir.txt"};

}  // namespace

std::span<const ChoiceList> choice_lists() {
  static constexpr ChoiceList lists[] = {{"Device", device_items, device_files},
                                         {"Equipment", equipment_items, equipment_files},
                                         {"Cause", cause_items, cause_files},
                                         {"Duty", duty_items, duty_files},
                                         {"Environment", environment_items, environment_files}};
  return lists;
}

const ChoiceList* find_choice_list(std::string_view column) {
  const std::string wanted = lower_case(column);
  const auto lists = choice_lists();
  const auto found = std::find_if(lists.begin(), lists.end(), [&](const ChoiceList& list) {
    return lower_case(list.column) == wanted;
  });
  return found == lists.end() ? nullptr : &*found;
}

}  // namespace tavlo
